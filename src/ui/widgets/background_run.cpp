#include "ui/widgets/background_run.h"

#include <utility>

#include "base/threads.h"

namespace quom {

BackgroundRun::~BackgroundRun() {
    cancel();
    for (std::thread& thread : threads_) thread.join();
}

void BackgroundRun::start(Work work, std::function<void()> then) {
    running_ = true;
    cancelled_ = false;
    then_ = std::move(then);
    const Progress progress = [this](double fraction, const std::string& text) {
        QMetaObject::invokeMethod(
            this, [this, fraction, told = QString::fromStdString(text)] { emit progressed(fraction, told); },
            Qt::QueuedConnection);
        return cancelled_.load();
    };
    const std::function<void()> body = [this, work = std::move(work), progress] {
        work(progress);
        QMetaObject::invokeMethod(
            this, [this] { end(); }, Qt::QueuedConnection);
    };
    threads_ = start_threads(1, body);
    if (threads_.empty()) body();
}

void BackgroundRun::end() {
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
    running_ = false;
    if (const auto then = std::exchange(then_, nullptr)) then();
}

}  // namespace quom
