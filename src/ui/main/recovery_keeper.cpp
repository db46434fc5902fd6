#include "ui/main/recovery_keeper.h"

#include <QStatusBar>
#include <chrono>

#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"

namespace quom {

namespace {

constexpr int EveryMinute = 60000, Soon = 100;  // [ms]

}  // namespace

RecoveryKeeper::RecoveryKeeper(mdiQUOM& frame, const std::string& folder)
    : frame_(frame), folder_(folder), place_(folder) {
    minute_.setInterval(EveryMinute);
    soon_.setInterval(Soon);
    soon_.setSingleShot(true);
    connect(&minute_, &QTimer::timeout, this, &RecoveryKeeper::keep);
    connect(&soon_, &QTimer::timeout, this, &RecoveryKeeper::keep);
}

RecoveryKeeper::~RecoveryKeeper() { finish(); }

void RecoveryKeeper::begin() {
    Workbench& bench = frame_.bench();
    const bool loaded = offer_left_copies(bench.session, place_, folder_, bench.messages());
    kept_ = std::make_shared<const SessionCopy>(copy_of(bench.session));
    if (loaded) {
        frame_.unload_windows(Lifetime::database);
        bench.announce({.substance = true,
                        .models = true,
                        .reference = true,
                        .units = true,
                        .options = true,
                        .data = true,
                        .xy = true,
                        .inputs = true});
        if (fulfilled(bench.session, Needs::critical_data) && !bench.session.shell.ModelsConfirmed)
            open_models(frame_, 0);
    }
    if (!place_.good()) return;
    minute_.start();
    connect(&bench, &Workbench::changed, &soon_, [this](const Changes& changes) {
        if (changes.data || changes.xy) soon_.start();
    });
}

void RecoveryKeeper::keep() {
    if (!kept_ || !place_.good()) return;
    if (writing_.valid() && writing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return soon_.start();
    finish();
    const Session& session = frame_.session();
    if (same_session(*kept_, session)) return;
    kept_ = std::make_shared<const SessionCopy>(copy_of(session));
    writing_ = std::async(std::launch::async, [copy = kept_, this] { return place_.write(*copy); });
}

void RecoveryKeeper::finish() {
    if (!writing_.valid()) return;
    const std::string fault = writing_.get();
    if (fault.empty() || told_) return;
    told_ = true;
    frame_.statusBar()->showMessage(
        QStringLiteral("No copy of the session is kept: ") + QString::fromStdString(fault), 20000);
}

void RecoveryKeeper::write_now() {
    if (writing_.valid()) writing_.wait();
    keep();
    finish();
}

void RecoveryKeeper::leave() {
    minute_.stop();
    soon_.stop();
    finish();
    if (place_.good()) place_.remove();
    kept_.reset();
}

}  // namespace quom
