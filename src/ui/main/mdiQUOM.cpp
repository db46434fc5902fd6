#include "ui/main/mdiQUOM.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLocale>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>

#include "session/data_diagnosis.h"
#include "session/start_up.h"
#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/main/data_windows.h"
#include "ui/main/focus_return.h"
#include "ui/main/mdi_area.h"
#include "ui/main/mdi_menus.h"
#include "ui/main/menu_actions.h"
#include "ui/main/menu_letters.h"
#include "ui/main/palette.h"
#include "ui/main/project_actions.h"
#include "ui/main/quick_keys.h"
#include "ui/main/quick_start.h"
#include "ui/main/recent_files.h"
#include "ui/main/start_page.h"
#include "ui/main/status_panel.h"
#include "ui/main/traffic_lights.h"
#include "ui/main/window_table.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/wheel_focus.h"
#include "ui/widgets/window_keys.h"
#include "ui/windows/frmQOptions.h"
#include "ui/windows/help_window.h"

namespace quom {

namespace {

constexpr QSize FirstSize(1280, 820), LeastSize(960, 640);
constexpr int MessageTime = 8000;  // of what the status bar tells [ms]

}  // namespace

mdiQUOM::mdiQUOM(std::string ProgramPath)
    : boxes_(std::make_unique<MessageBoxes>(this)),
      bench_(std::make_unique<Workbench>(*boxes_)),
      dialogs_(std::make_unique<Dialogs>()),
      menus_(std::make_unique<mdiMenus>(*this)) {
    setObjectName(QStringLiteral("mdiQUOM"));
    setWindowTitle(
        QStringLiteral("QUOM-6   Thermodynamic Calculations of States and Processes for Pure Substances"));
    session().ProgramPath = std::move(ProgramPath);
    new WheelFocus(this);
    connect(bench_.get(), &Workbench::changed, this, &mdiQUOM::refresh);
    connect(bench_.get(), &Workbench::changed, this, [this](const Changes& changes) {
        if (changes.substance) remember_substance(*bench_);
        remember_data(*bench_, changes);
        if (changes.options) show_calculation_captions(*this);
    });
    connect(bench_.get(), &Workbench::moving, this, &mdiQUOM::leave_windows_of);
    connect(bench_.get(), &Workbench::moved, this,
            [this](const QString& sentence) { statusBar()->showMessage(sentence, MessageTime); });
    area = named(new MdiArea(this), "area", QStringLiteral("Windows"));
    setCentralWidget(area);
    places_ = new WindowPlaces(*area, bench_->memory);
    focus_ = new FocusReturn(*area);
    start_page = new StartPage(*this, area);
    menus_->build_menu_bar();
    new MenuLetters(*menuBar());
    connect(menus_->menu(QStringLiteral("mnuCalcMain")), &QMenu::aboutToShow, this,
            &mdiQUOM::opening_calculation_menu);
    // An entry is triggered after the menu has gone.
    connect(
        menus_->menu(QStringLiteral("mnuCalcMain")), &QMenu::aboutToHide, this,
        [this] { told_of_missing_data_ = false; }, Qt::QueuedConnection);
    connect(menus_->menu(QStringLiteral("mnuData")), &QMenu::aboutToShow, this, &mdiQUOM::opening_data_menu);
    connect(menus_->menu(QStringLiteral("mnuWindow")), &QMenu::aboutToShow, this,
            &mdiQUOM::opening_windows_menu);
    build_toolbar();
    build_status_bar();
    add_quick_keys(*this, *menus_);
    palette_ = new Palette(*this, *menus_);
    const QSize available = screen()->availableSize();
    setMinimumSize(LeastSize.boundedTo(available));
    resize(FirstSize.boundedTo(available));
}

// The page watches the area, which is not to be asked any more while it is being destroyed.
mdiQUOM::~mdiQUOM() { delete start_page; }

void mdiQUOM::set_dialogs(std::unique_ptr<Dialogs> dialogs) { dialogs_ = std::move(dialogs); }

void mdiQUOM::build_toolbar() {
    QToolBar* toolbar = addToolBar(QStringLiteral("Toolbar"));
    toolbar->setObjectName(QStringLiteral("Toolbar1"));
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    menus_->build_toolbar(toolbar);

    txtAmpel = named(new TrafficLights(toolbar), "txtAmpel");
    toolbar->addWidget(txtAmpel);
    const auto add_button = [&](const char* name, const char* caption, void (*run)(mdiQUOM&, int),
                                int value) {
        auto* button =
            named(new TrimmedButton(QLatin1String(caption), toolbar), name, QLatin1String(caption));
        connect(button, &QPushButton::clicked, this, [this, run, value] { run(*this, value); });
        return button;
    };
    const auto add_space = [&](int width) {
        auto* space = new QWidget(toolbar);
        if (width > 0)
            space->setFixedWidth(width);
        else
            space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        toolbar->addWidget(space);
    };
    add_space(6);
    cmdDatenDiagnose = add_button(
        "cmdDatenDiagnose", "     Data Diagnosis",
        [](mdiQUOM& f, int) {
            const Session& s = f.session();
            DataDiagnosis(s.substance(), substance_marks(s.ProgramPath, s.substance()), f.bench().messages());
        },
        0);
    diagnose_shown_ = toolbar->addWidget(cmdDatenDiagnose);
    add_space(0);
    cmdFind = add_button(
        "cmdFind", "Find  Ctrl+K", [](mdiQUOM& f, int) { f.toggle_palette(); }, 0);
    cmdFind->setIcon(svg_icon(QStringLiteral("search")));
    toolbar->addWidget(cmdFind);
    add_space(8);
    cmdErstnutzer = add_button("cmdErstnutzer", "First steps", show_help_topic, help_first_steps);
    toolbar->addWidget(cmdErstnutzer);
    add_space(8);
    cmdRechenUebung = add_button("cmdRechenUebung", "Exercise", show_help_topic, help_exercise);
    toolbar->addWidget(cmdRechenUebung);
}

void mdiQUOM::build_status_bar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("StatusBar1"));
    constexpr int Stretch[] = {2, 2, 4, 4};
    const char* const Spoken[] = {"Database", "Substance", "Equations", "Concept of calculation"};
    for (int i = 0; i < 4; ++i) {
        panels[i] = new StatusPanel(i > 0, bar);
        named(panels[i], qPrintable(QStringLiteral("StatusBar1_%1").arg(i + 1)), QLatin1String(Spoken[i]));
        bar->addWidget(panels[i], Stretch[i]);
    }
}

void mdiQUOM::start(const std::string& project) {
    const std::string ProgramPath = session().ProgramPath;
    start_session(session(), ProgramPath, QLocale::system().decimalPoint() == QStringLiteral(","));
    bench_->history.start(session());
    refresh();
    start_page->focus_first();
    if (!project.empty()) load_project(*this, project);
    refresh();
}

void mdiQUOM::refresh() {
    const Session& s = session();
    menus_->refresh();
    show_steps();
    const bool substance = fulfilled(s, Needs::substance);
    txtAmpel->SetzeAmpel(substance ? DatenSituation(s.substance()).AmpelStufe : 0);
    diagnose_shown_->setVisible(substance);
    panels[0]->show_text(database_panel(s));
    panels[1]->show_text(substance ? s.substance().StoffName : std::string());
    panels[2]->show_text(models_panel(s));
    panels[3]->show_text(fulfilled(s, Needs::models) ? s.shell.ModelStatus : std::string());
    area->set_hint(QString::fromStdString(next_step_hint(s)));
    start_page->refresh();
    share_status_bar();
}

void mdiQUOM::show_steps() {
    const auto show = [this](const char* name, const char* word, const std::string& sentence) {
        QAction* action = menus_->action(QLatin1String(name));
        const QString text = QString::fromStdString(sentence).replace(QLatin1Char('&'), QStringLiteral("&&"));
        action->setText(QLatin1String(word) + (text.isEmpty() ? text : QStringLiteral(": ") + text));
        action->setEnabled(!text.isEmpty());
    };
    show("mnuUndo", "Undo", bench_->history.undo_sentence(session()));
    show("mnuRedo", "Redo", bench_->history.redo_sentence());
}

// As after the action that leads there by hand: another substance and another concept ask anew what is to be
// calculated; without a substance there is no window of one.
void mdiQUOM::leave_windows_of(const Document& before) {
    const Document& now = bench_->document();
    if (now.DatabaseKind == 0)
        unload_windows(Lifetime::database);
    else if (now.substance.StoffIndexAktiv == 0)
        unload_session_windows();
    else if (now.substance != before.substance || now.models.Konzept != before.models.Konzept ||
             now.models.VPhaseOnly() != before.models.VPhaseOnly())
        unload_calculation_windows();
}

void mdiQUOM::share_status_bar() {
    constexpr int between = 8;  // of two panels, and at the ends with the size grip
    share_width(panels, width() - between * 6);
}

void mdiQUOM::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    share_status_bar();
}

QWidget* mdiQUOM::find_or_make(const char* name) {
    if (QWidget* window = child(name)) return window;
    const WindowRow& row = window_row(QString::fromLatin1(name));
    return row.make ? row.make(*this) : nullptr;
}

void mdiQUOM::open_child(QWidget* window, QWidget* beside) {
    if (qobject_cast<QMdiSubWindow*>(window->parentWidget())) return show_child(window);
    const WindowRow& row = window_row(window->objectName());
    for (QMdiSubWindow* other : area->subWindowList())
        if (other->isMaximized()) other->showNormal();
    new WindowKeys(window);
    auto* sub = new QMdiSubWindow;
    sub->setWidget(window);
    sub->setWindowIcon(windowIcon());
    Qt::WindowFlags flags = Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                            Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                            Qt::WindowCloseButtonHint;
    if (row.sizing == Sizing::free) flags |= Qt::WindowMaximizeButtonHint;
    area->addSubWindow(sub, flags);
    connect(window, &QWidget::windowTitleChanged, sub, &QWidget::setWindowTitle);

    focus_->opened(sub, beside ? beside->parentWidget() : area->activeSubWindow());
    places_->open(sub, beside);
    show_child(window);
}

void mdiQUOM::show_child(QWidget* window) {
    auto* sub = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    if (!sub) return;
    window->show();
    if (sub->isMinimized())
        sub->showNormal();
    else
        sub->show();
    area->setActiveSubWindow(sub);
}

void mdiQUOM::hide_child(QWidget* window) {
    QWidget* sub = window->parentWidget();
    if (!sub) return;
    sub->hide();
    focus_->gone(sub);
}

QWidget* mdiQUOM::child(const char* name) const {
    for (const QMdiSubWindow* sub : area->subWindowList())
        if (sub->widget() && sub->widget()->objectName() == QLatin1String(name)) return sub->widget();
    return nullptr;
}

void mdiQUOM::unload(const char* name) {
    QWidget* window = child(name);
    if (!window) return;
    auto* sub = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    area->removeSubWindow(sub);
    sub->hide();
    window->close();     // a window may still store what its closing stores
    sub->deleteLater();  // the window goes with it; it may be the one whose button was pressed
    places_->closed();
    focus_->gone(sub);
}

void mdiQUOM::unload_windows(Lifetime longest) {
    for (const Lifetime lifetime : {Lifetime::database, Lifetime::substance, Lifetime::calculation})
        for (const WindowRow& row : window_rows())
            if (row.lifetime == lifetime && lifetime <= longest) unload(row.name);
}

void mdiQUOM::show_help(int topic) {
    // A window of its own for a modal one, which would let no other be used; it goes with it.
    if (QWidget* modal = QApplication::activeModalWidget()) {
        auto* help = modal->findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
        return (help ? help : new HelpWindow(modal))->show_topic(topic);
    }
    if (!help_) help_ = new HelpWindow(this);
    help_->show_topic(topic);
}

void mdiQUOM::toggle_palette() {
    if (palette_->isVisible())
        palette_->leave();
    else
        palette_->open();
}

void mdiQUOM::opening_data_menu() {
    fill_recent_menu(*this, menus_->menu(QStringLiteral("mnuData_RecentProjects")), RecentFiles::projects);
    fill_recent_menu(*this, menus_->menu(QStringLiteral("mnuData_RecentData")), RecentFiles::data);
}

void mdiQUOM::opening_calculation_menu() {
    told_of_missing_data_ = quom::opening_calculation_menu(session(), bench_->messages());
    menus_->action(QStringLiteral("mnuCalc_18"))
        ->setText(QString::fromStdString(std::string(virial_menu_caption(session()))));
    unload_windows(Lifetime::calculation);
}

void mdiQUOM::opening_windows_menu() {
    QMenu* menu = menus_->menu(QStringLiteral("mnuWindow"));
    menu->clear();
    menu->addAction(QStringLiteral("Cascade"), places_, &WindowPlaces::cascade);
    menu->addAction(QStringLiteral("Tile"), places_, &WindowPlaces::tile);
    menu->addSeparator();
    for (QMdiSubWindow* sub : area->subWindowList()) {
        if (sub->isHidden()) continue;
        QAction* action = menu->addAction(sub->windowTitle().simplified(), this,
                                          [this, sub] { show_child(sub->widget()); });
        action->setCheckable(true);
        action->setChecked(sub == area->activeSubWindow());
    }
}

void mdiQUOM::closeEvent(QCloseEvent* event) {
    if (!BatchSaveFrage(*this) || !XYSaveFrage(*this)) return event->ignore();
    leave_session(*this);
    if (help_) help_->close();
    event->accept();
}

}  // namespace quom
