#include "ui/main/window_table.h"

#include "ui/windows/frmCompare.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/frmStateChart.h"
#include "ui/windows/frmTpRhoEdit.h"
#include "ui/windows/frmTpVSInputBox.h"

namespace quom {

namespace {

template <class Window>
QWidget* made(mdiQUOM& frame) {
    return new Window(frame);
}

constexpr WindowRow Rows[] = {
    // name, lifetime, part, topic of help, sizing, size, what makes it
    {"frmParinput", Lifetime::calculation, Part::input, 82, Sizing::fixed},
    {"frmCalcIn", Lifetime::calculation, Part::none, 50, Sizing::fixed},
    {"frmBParInput", Lifetime::calculation, Part::none, 24},
    {"frmIsoCalc", Lifetime::calculation, Part::beside_result, 80},
    {"frmKessel", Lifetime::calculation, Part::beside_result, 81},
    {"frmInputProzessLinien", Lifetime::calculation, Part::none, 0},
    {"frmCEOSDiagnose", Lifetime::calculation, Part::beside_result, 83},
    {"frmPictureSuperCrit", Lifetime::calculation, Part::beside_result, 83},
    {"frmQCalcOut", Lifetime::calculation, Part::result, 83},
    {"frmQBankEdit", Lifetime::substance, Part::none, 0},
    {"frmQModell", Lifetime::substance, Part::models, 50, Sizing::width_only, {530, 0}, made<frmQModell>},
    {"frmQFitting", Lifetime::substance, Part::none, 0},
    {"frmTpVSInputBox", Lifetime::substance, Part::none, 90, Sizing::fixed, {}, made<frmTpVSInputBox>},
    {"frmQGraph2D_Gestaltung",
     Lifetime::substance,
     Part::none,
     90,
     Sizing::free,
     {640, 520},
     made<frmQGraph2D_Gestaltung>},
    {"frmCompare", Lifetime::substance, Part::none, 90, Sizing::free, {880, 460}, made<frmCompare>},
    {"frmQGraph2D", Lifetime::substance, Part::none, 90, Sizing::free, {900, 640}, made<frmQGraph2D>},
    {"frmGraph3D", Lifetime::substance, Part::none, 0},
    {"frmTpRhoEdit", Lifetime::substance, Part::none, 86, Sizing::free, {980, 600}, made<frmTpRhoEdit>},
    {"frmQXYEdit", Lifetime::substance, Part::none, 87, Sizing::free, {780, 610}, made<frmQXYEdit>},
    {"frmQTextEdit", Lifetime::substance, Part::none, 20},
    {"frmStateChart", Lifetime::database, Part::none, 91, Sizing::free, {1000, 700}, made<frmStateChart>},
    {"frmQStoffWahl", Lifetime::database, Part::none, 10, Sizing::free, {680, 560}, made<frmQStoffWahl>},
    {"frmReferenz", Lifetime::program, Part::none, 84},
    {"frmQOptions", Lifetime::program, Part::none, 85},
    {"frmTextImport", Lifetime::program, Part::none, 89},
    {"frmQCmnDlg", Lifetime::program, Part::none, 88},
    {"help_window", Lifetime::program, Part::none, 0},
    {"mdiQUOM", Lifetime::program, Part::none, 2},
};
constexpr WindowRow Unknown = {"", Lifetime::program, Part::none, 0};

}  // namespace

std::span<const WindowRow> window_rows() { return Rows; }

const WindowRow& window_row(QStringView name) {
    for (const WindowRow& row : Rows)
        if (name == QLatin1String(row.name)) return row;
    return Unknown;
}

}  // namespace quom
