// Work outside the window's thread, with progress and an end that the window hears of.
#pragma once
#include <QObject>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "base/messages.h"

namespace quom {

class BackgroundRun : public QObject {
    Q_OBJECT
 public:
    // Must not touch what belongs to the window; returns early once its progress says so.
    using Work = std::function<void(const Progress& progress)>;

    explicit BackgroundRun(QObject* parent) : QObject(parent) {}
    ~BackgroundRun() override;  // cancels and waits
    // Starts the work; `then` is called in this thread when it has ended, unless this object is gone by then.
    // Where the system gives no thread the work is done here and now. Nothing else may be running.
    void start(Work work, std::function<void()> then);
    void cancel() { cancelled_ = true; }
    bool is_running() const { return running_; }

 signals:
    void progressed(double fraction, const QString& text);

 private:
    void end();
    std::vector<std::thread> threads_;  // one or none
    std::function<void()> then_;
    std::atomic<bool> cancelled_{false};
    bool running_ = false;
};

}  // namespace quom
