#include "ui/main/screenshots.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPixmap>
#include <QProcess>
#include <QSet>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "base/files.h"
#include "forms/diagram_form.h"
#include "session/data_diagnosis.h"
#include "session/program_path.h"
#include "session/project_file.h"
#include "ui/main/calculation_windows.h"
#include "ui/main/data_windows.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/mdi_area.h"
#include "ui/main/menu_actions.h"
#include "ui/main/palette.h"
#include "ui/main/project_actions.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/number_box.h"
#include "ui/windows/frmBParInput.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmCompare.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQOptions.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/frmStateChart.h"
#include "ui/windows/frmTextImport.h"
#include "ui/windows/frmTpRhoEdit.h"
#include "ui/windows/frmTpVSInputBox.h"

namespace quom {

namespace {

// Boxes are not shown: they would wait for an answer.
class DefaultAnswers : public Messages {
 public:
    Answer ask(const Message& message) override { return message.default_button; }
};

struct Step {
    const char* name;
    void (*go)(mdiQUOM&);
};

void press(mdiQUOM& frame, const char* window, const char* button) {
    if (QWidget* w = frame.child(window))
        if (auto* b = w->findChild<QAbstractButton*>(QLatin1String(button))) b->click();
}

void calculate(mdiQUOM& frame, std::initializer_list<const char*> values) {
    auto* input = frame.child<frmParinput>();
    if (!input) return;
    std::size_t box = 0;
    for (const char* value : values) input->par[box++]->setText(QLatin1String(value));
    input->cmdParameter_OK->click();
}

void pop_up(mdiQUOM& frame, const char* name) {
    if (auto* menu = frame.findChild<QMenu*>(QLatin1String(name))) menu->popup(frame.pos() + QPoint(20, 30));
}

template <DesignPage Page>
void show_design(mdiQUOM& frame) {
    auto& sheet = frame.session().diagram.sheet;
    if (sheet && Page == DesignPage::sheet)  // points for their page, in the middle
        for (const PointSource source : {PointSource::data_editor, PointSource::fitting}) {
            const CurveRange& r = sheet->diagram.range;
            const SheetPoint points[] = {{0.4F * r.XMax, 0.6F * r.YMax}, {0.6F * r.XMax, 0.5F * r.YMax}};
            cmdExternPoints(*sheet, points, source);
        }
    if (sheet) frmQGraph2D_Gestaltung::open(frame, Page, {.number = 1});
}

constexpr Step Steps[] = {
    {"start", [](mdiQUOM&) {}},
    {"substances",
     [](mdiQUOM& f) {
         Session& s = f.session();
         if (open_picked_database(s, 7, StarterDatabase, f.bench().messages())) {
             f.refresh();
             select_substance(f, 0);
             if (auto* w = f.child<frmQStoffWahl>()) {
                 w->NameCombo->setEditText(QStringLiteral("prop"));  // the list shows what it is found in
             }
         }
     }},
    {"synonyms", [](mdiQUOM& f) { press(f, frmQStoffWahl::Name, "cmdSynonyme"); }},
    {"models",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmQStoffWahl>()) w->NameCombo->setEditText(QStringLiteral("Propane"));
         press(f, frmQStoffWahl::Name, "StoffOK");
     }},
    {"models-confirmed", [](mdiQUOM& f) { press(f, frmQModell::Name, "cmdOKModell"); }},
    {"palette",
     [](mdiQUOM& f) {
         if (auto* palette = f.findChild<Palette*>()) {
             palette->open();
             palette->txtFind->setText(QStringLiteral("t rho"));
         }
     }},
    {"eos-parameters",
     [](mdiQUOM& f) {
         if (auto* palette = f.findChild<Palette*>()) palette->leave();
         show_eos_parameters(f, 0);
     }},
    {"diagnosis",
     [](mdiQUOM& f) {
         f.unload("frmQTextEdit");
         const Session& s = f.session();
         MessageBoxes(&f).ask(data_diagnosis_text(DatenSituation(s.substance()),
                                                  substance_marks(s.ProgramPath, s.substance())));
     }},
    {"project-info", [](mdiQUOM& f) { show_project_status(f, 0); }},
    {"open-project",
     [](mdiQUOM& f) {
         f.unload("frmQTextEdit");
         // In a folder of its own, so that nothing of the user's is shown or touched.
         const QTemporaryDir folder;
         const std::string project = folder.filePath(QStringLiteral("propane cycle.QC6")).toStdString();
         const auto comment = [](const CommentQuestion&) {
             return std::string("cycle of the plant, design");
         };
         SaveProject(f.session(), project, comment, f.bench().messages());
         QDir(folder.path()).mkdir(QStringLiteral("measured"));
         open_with_preview(f, {.title = QStringLiteral("Load a project (*.QC6)"),
                               .folder = folder.path().toStdString(),
                               .mask = "*.QC6",
                               .name = "propane cycle.QC6"});
     }},
    {"comment",
     [](mdiQUOM& f) {
         f.dialogs().ask_text(&f, QStringLiteral(" File comment (optional) "),
                              QStringLiteral("<Cancel> = No Comment"), QStringLiteral("cycle of the plant"));
     }},
    {"question",
     [](mdiQUOM& f) {
         MessageBoxes(&f).ask({.title = "exper. data",
                               .text = "New substance was chosen.\nDelete loaded exper. data now?",
                               .buttons = Buttons::yes_no,
                               .default_button = Answer::yes,
                               .kind = MessageKind::question});
     }},
    {"virial", [](mdiQUOM& f) { frmBParInput(f.session().document.eos_input, &f).exec(); }},
    {"reference-state", [](mdiQUOM& f) { open_reference_state(f, 0); }},
    {"options", [](mdiQUOM& f) { open_options(f, 0); }},
    {"import",
     [](mdiQUOM& f) {
         QApplication::clipboard()->setText(QStringLiteral(
             "# logger 7\nt / °C;Dampfdruck / kPa;Bemerkung\n20,5;1.234,5;\n30,1;1.499,2;\n35,0;"
             "Ausfall;Sensor\n40;1.813,7;\n-300;2;\n50,2;2.178,9;\n"));
         open_text_import(f, 0);
     }},
    {"selection", [](mdiQUOM& f) { start_calculation(f, 4); }},
    {"selection-partial", [](mdiQUOM& f) { press(f, frmCalcIn::Name, "opt_glob_1"); }},
    {"reference-point", [](mdiQUOM& f) { press(f, frmCalcIn::Name, "Ref_opt_2"); }},
    {"input", [](mdiQUOM& f) { start_calculation(f, 1); }},
    {"result",
     [](mdiQUOM& f) {
         calculate(f, {"300", "100"});
     }},
    {"functions-table", [](mdiQUOM& f) { press(f, frmQCalcOut::Name, "chkUHS"); }},
    {"result-table",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmQCalcOut>()) w->tabs->setCurrentIndex(1);
     }},
    {"eos-diagnosis", [](mdiQUOM& f) { press(f, frmQCalcOut::Name, "cmdCEOSDiagnose"); }},
    {"supercritical-input",
     [](mdiQUOM& f) {
         f.unload_calculation_windows();
         start_calculation(f, 1);
         calculate(f, {"400", "200"});
     }},
    {"supercritical", [](mdiQUOM& f) { press(f, frmQCalcOut::Name, "cmdInfoSuperCrit"); }},
    {"iso",
     [](mdiQUOM& f) {
         f.unload_calculation_windows();
         start_calculation(f, 8);
         calculate(f, {"320", "500"});
         press(f, frmQCalcOut::Name, "cmdIsoCalc");
     }},
    {"iso-found", [](mdiQUOM& f) { press(f, "frmIsoCalc", "cmdCalc"); }},
    {"tank",
     [](mdiQUOM& f) {
         f.unload_calculation_windows();
         start_tank(f, 0);
     }},
    {"tank-result",
     [](mdiQUOM& f) {
         calculate(f, {"1", "100", "300"});
     }},
    {"exp-data",
     [](mdiQUOM& f) {
         f.unload_calculation_windows();
         Document document = f.session().document;
         clear_points(document.exp);
         std::string rows;
         for (int i = 0; i < 24; ++i)
             rows += std::to_string(230 + 5 * i) + "\t" + std::to_string(96 + 40 * i) + ",5\t0\t" +
                     std::to_string(560 - 4 * i) + "\n";
         insert_rows(document.exp, 1, rows);
         toggle_lines(document.exp, 4, 4);
         document.exp.file.ExpComment = "vapor pressures";
         f.bench().commit(std::move(document));
         edit_exp_data(f, 0);
         press(f, frmTpRhoEdit::Name, "opt_T_unit_1");
         press(f, frmTpRhoEdit::Name, "opt_Rho_Unit_1");
         if (auto* w = f.child<frmTpRhoEdit>()) {
             w->y[0]->setText(QStringLiteral("-300"));
             w->OKinput->click();
         }
     }},
    {"xy-data",
     [](mdiQUOM& f) {
         f.unload(frmTpRhoEdit::Name);
         Document document = f.session().document;
         insert_rows(document.xy, 1, "0.1\t1.25\n0.2\t2.5\n0.3\t3.75\n0.4\t0\n0.5\t6.25\n");
         toggle_lines(document.xy, 4, 4);
         f.bench().commit(std::move(document));
         edit_xy_data(f, 0);
         press(f, frmQXYEdit::Name, "cmdManip");
     }},
    {"diagram",
     [](mdiQUOM& f) {
         f.unload(frmQXYEdit::Name);
         open_diagram(f, static_cast<int>(Kind::p_v));
     }},
    {"diagram-curves",
     [](mdiQUOM& f) {
         f.unload(frmTpVSInputBox::Name);
         SilentMessages nobody;
         for (const double T : {300.0, 340.0, f.session().substance().Tcr, 400.0, 450.0}) {
             f.session().diagram.state.T = T;
             draw_curve(f.session(), nobody);
         }
         f.session().diagram.sheet->last.T = 340;
         for (const Insertion what : {Insertion::coexistence, Insertion::tie_line, Insertion::p,
                                      Insertion::crit_calculated, Insertion::legend})
             insert(f.session(), what, false, nobody);
         if (auto* w = f.child<frmQGraph2D>()) w->refresh();
     }},
    {"diagram-live",
     [](mdiQUOM& f) {
         show_parameter_box(f, true);
         if (auto* w = f.child<frmTpVSInputBox>()) w->sldParameter->setValue(340);
     }},
    {"diagram-refused",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmTpVSInputBox>()) {
             w->txtParameter->setText(QStringLiteral("-1"));
             emit w->txtParameter->textEdited(w->txtParameter->text());
         }
     }},
    {"diagram-colours", [](mdiQUOM& f) { press(f, frmQGraph2D::Name, "cmdFarbVorwahl"); }},
    {"diagram-insert",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmQGraph2D>()) w->mnuInsert->popup(w->mapToGlobal(QPoint(0, 40)));
     }},
    {"diagram-limits",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmQGraph2D>()) w->mnuCoord->trigger();
     }},
    {"design-sheet", show_design<DesignPage::sheet>},
    {"design-curves", show_design<DesignPage::curves>},
    {"design-points", show_design<DesignPage::points>},
    {"design-x", show_design<DesignPage::x_axis>},
    {"design-y", show_design<DesignPage::y_axis>},
    {"design-y2", show_design<DesignPage::y2_axis>},
    {"design-texts", show_design<DesignPage::texts>},
    {"design-legend", show_design<DesignPage::legend>},
    {"compare",
     [](mdiQUOM& f) {
         f.unload(frmTpVSInputBox::Name);
         open_diagram(f, static_cast<int>(Kind::sat_p_T));
         if (auto* w = f.child<frmQGraph2D>())
             w->findChild<QAction*>(QStringLiteral("mnuCompare"))->trigger();
         if (auto* w = f.child<frmCompare>())
             for (int i = 0; i < w->lstEquations->count(); i += 2)
                 w->lstEquations->item(i)->setCheckState(Qt::Checked);
         press(f, frmCompare::Name, "cmdDraw");
     }},
    {"data",
     [](mdiQUOM& f) {
         close_diagram_windows(f);
         pop_up(f, "mnuData");
     }},
    {"chart-log-ph", [](mdiQUOM& f) { open_state_chart(f, static_cast<int>(ChartKind::log_ph)); }},
    {"chart-Ts-black",
     [](mdiQUOM& f) {
         open_state_chart(f, static_cast<int>(ChartKind::Ts));
         press(f, frmStateChart::Name, "chkBlack");
     }},
    {"chart-hs",
     [](mdiQUOM& f) {
         open_state_chart(f, static_cast<int>(ChartKind::hs));
         press(f, frmStateChart::Name, "chkBlack");
     }},
    {"calculations",
     [](mdiQUOM& f) {
         f.unload(frmStateChart::Name);
         pop_up(f, "mnuCalcMain");
     }},
    {"functions", [](mdiQUOM& f) { pop_up(f, "mnuGraf_FuT"); }},
    {"help", [](mdiQUOM& f) { f.show_help(62); }},
    {"points",
     [](mdiQUOM& f) {
         f.unload_calculation_windows();
         Document document = f.bench().document();
         document.options.BatchMode = true;
         document.calc.CalcMode = Mode::T_p;
         document.exp.points.edit().resize(13);
         for (int i = 1; i <= 12; ++i)
             document.exp.points.edit()[static_cast<std::size_t>(i)] = {
                 .Aus = static_cast<std::int16_t>(i == 4 ? -1 : 0),
                 .T = 290.0 + 5 * i,
                 .p = 500,
                 .rhoV = 9.5F};
         f.bench().commit(std::move(document));
         start_calculation(f, 3);
         if (auto* w = f.child<frmQCalcOut>()) w->tabs->setCurrentIndex(3);
         press(f, frmQCalcOut::Name, "cmdCalculateAll");
     }},
    {"record",
     [](mdiQUOM& f) {
         if (auto* w = f.child<frmQCalcOut>()) w->tabs->setCurrentIndex(2);
         press(f, frmQCalcOut::Name, "cmdProtokoll");
     }},
};

// One run: a folder of pictures at a scale, in a theme, with a size of the main window.
struct PictureRun {
    const char *folder, *scale, *theme, *size;
};
constexpr PictureRun Runs[] = {{"100", "1", "light", "1360x900"},
                               {"200", "2", "light", "1360x900"},
                               {"dark", "1", "dark", "1360x900"},
                               {"1024", "1", "light", "1024x768"},
                               {"1280", "1", "dark", "1280x820"}};

// A screen without a display that holds the main window at any of the scales.
constexpr const char* Screen =
    R"({"screens":[{"name":"pictures","x":0,"y":0,"width":3840,"height":2400,"logicalDpi":96,)"
    R"("logicalBaseDpi":96,"dpr":1}]})";

}  // namespace

int take_screenshots(mdiQUOM& frame, const QString& folder, const QSize& size) {
    if (!QDir().mkpath(folder)) return 0;
    DefaultAnswers answers;
    Messages& before = frame.bench().messages();
    frame.bench().listen(answers);
    frame.resize(size);
    int written = 0;
    QSet<QString> seen;  // windows with a picture of their own
    for (const Step& step : Steps) {
        const auto take = [&](QWidget* window) {
            if (!window->isVisible() || window->objectName().isEmpty()) return;
            const QString file =
                QStringLiteral("%1/%2-%3.png").arg(folder, QLatin1String(step.name), window->objectName());
            if (window->grab().save(file)) ++written;
            seen.insert(window->objectName());
        };
        // A modal window holds the step until it is closed.
        QTimer::singleShot(50, &frame, [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                take(modal);
                modal->close();
            }
        });
        step.go(frame);
        QEventLoop pause;
        QTimer::singleShot(60, &pause, &QEventLoop::quit);
        pause.exec();
        for (QWidget* window : QApplication::topLevelWidgets()) take(window);
        for (const QMdiSubWindow* sub : frame.area->subWindowList()) {
            const bool first = !seen.contains(sub->widget()->objectName());
            if (first || sub == frame.area->activeSubWindow()) take(sub->widget());
        }
        while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    }
    frame.bench().listen(before);
    frame.session().record.ProtocolOpen = false;  // nothing is kept of this session
    return written;
}

int screenshot_runs(const QString& program, const QStringList& others, const QString& folder) {
    const QTemporaryDir temporary;
    const QString screen = temporary.filePath(QStringLiteral("screen.json"));
    if (!write_file_atomic(screen.toStdString(), Screen).empty()) return 3;
    for (const PictureRun& run : Runs) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                           QStringLiteral("offscreen:configfile=") + screen);
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QLatin1String(run.scale));
        environment.insert(QStringLiteral("QUOM_THEME"), QLatin1String(run.theme));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(program, QStringList{QStringLiteral("--pictures"),
                                           QDir(folder).filePath(QLatin1String(run.folder)),
                                           QStringLiteral("--picture-size"), QLatin1String(run.size)} +
                                   others);
        if (!process.waitForFinished(300000) || process.exitCode() != 0) return 3;
    }
    return 0;
}

}  // namespace quom
