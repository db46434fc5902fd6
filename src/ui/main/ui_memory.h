// What the windows remember between sessions: places, tabs, units, digits, check boxes, recent names. One
// small file in the user's state folder; none of it belongs to a project.
#pragma once
#include <QString>
#include <QVariant>
#include <memory>

class QSettings;

namespace quom {

class UiMemory {
 public:
    // file: path of the file; empty: remembered until the program ends, and written nowhere. A file that is
    // missing, unreadable or of another version means defaults.
    explicit UiMemory(const QString& file = {});
    ~UiMemory();
    UiMemory(UiMemory&&) noexcept;
    UiMemory& operator=(UiMemory&&) noexcept;

    // Keys are paths of plain words: "result/tab".
    QVariant value(const QString& key, const QVariant& otherwise = {}) const;
    void set(const QString& key, const QVariant& value);

    // "workbench.ini" in the state folder of the user (XDG_STATE_HOME, else ~/.local/state).
    static QString users_file();

 private:
    std::unique_ptr<QSettings> settings_;
    QVariantMap values_;  // without a file
};

}  // namespace quom
