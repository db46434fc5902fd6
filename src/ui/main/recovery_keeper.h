// Keeps the copy of the running session: every minute and after each change of data, when something differs,
// written outside the window's thread; and offers at the start what a crash left behind.
#pragma once
#include <QObject>
#include <QTimer>
#include <future>
#include <memory>
#include <string>

#include "session/recovery_files.h"

namespace quom {

class mdiQUOM;

class RecoveryKeeper : public QObject {
    Q_OBJECT
 public:
    // Of the session of this frame, in the program folder.
    RecoveryKeeper(mdiQUOM& frame, const std::string& folder);
    ~RecoveryKeeper() override;  // what is being written is finished; the copy stays

    // Offers copies that were left behind, then keeps that of this session.
    void begin();
    // Writes at once where the session differs from its copy, and waits for it.
    void write_now();
    // The program ends as it should: nothing is kept.
    void leave();
    const RecoveryPlace& place() const { return place_; }

 private:
    void keep();  // begins to write where the session differs from its copy
    void finish();

    mdiQUOM& frame_;
    std::string folder_;
    RecoveryPlace place_;
    QTimer minute_, soon_;
    std::shared_ptr<const SessionCopy> kept_;
    std::future<std::string> writing_;  // its fault
    bool told_ = false;
};

}  // namespace quom
