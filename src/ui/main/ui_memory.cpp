#include "ui/main/ui_memory.h"

#include <QDir>
#include <QSettings>

namespace quom {

namespace {

constexpr int Version = 1;
const QString VersionKey = QStringLiteral("version");

}  // namespace

UiMemory::UiMemory(const QString& file) {
    if (file.isEmpty()) return;
    settings_ = std::make_unique<QSettings>(file, QSettings::IniFormat);
    if (settings_->status() != QSettings::NoError || settings_->value(VersionKey).toInt() != Version)
        settings_->clear();
    settings_->setValue(VersionKey, Version);
}

UiMemory::~UiMemory() = default;
UiMemory::UiMemory(UiMemory&&) noexcept = default;
UiMemory& UiMemory::operator=(UiMemory&&) noexcept = default;

QVariant UiMemory::value(const QString& key, const QVariant& otherwise) const {
    return settings_ ? settings_->value(key, otherwise) : values_.value(key, otherwise);
}

void UiMemory::set(const QString& key, const QVariant& value) {
    if (settings_)
        settings_->setValue(key, value);
    else
        values_.insert(key, value);
}

QString UiMemory::users_file() {
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (folder.isEmpty()) folder = QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/quom/workbench.ini");
}

}  // namespace quom
