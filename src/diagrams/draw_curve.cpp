#include "diagrams/draw_curve.h"

#include <utility>

#include "diagrams/curve_labels.h"
#include "diagrams/marks.h"

namespace quom {
namespace {

constexpr int CoexistenceWidth = 3;

bool is_coexistence(const KindInfo& kind) {
    return kind.section == Section::projection && kind.boundary == kind.kind;
}

}  // namespace

DrawnCurve cmdDraw(GraphDocument& sheet, const Fluid& fluid, CurveInput input) {
    input.range = sheet.diagram.range;
    input.LogX = sheet.x.log;
    DrawnCurve drawn;
    drawn.result = CalcCurve(fluid, input);
    drawn.messages = curve_messages(fluid, drawn.result);
    if (!keeps_curve(drawn.result)) return drawn;
    Added added = AddCurve(sheet, drawn.result.curve, curve_text(fluid, input, drawn.result));
    if (added.message) drawn.messages.push_back(std::move(*added.message));
    drawn.slot = added.slot;
    if (added.slot == 0) return drawn;
    const KindInfo& kind = kind_info(input.kind);
    if (is_coexistence(kind)) sheet.curve(added.slot).series.style.width = CoexistenceWidth;
    sheet.last = {input.T, input.p, input.v};
    if (kind.section == Section::database) {
        sheet.diagram.DBTMin = drawn.result.DBTMin;
        sheet.diagram.DBTMax = drawn.result.DBTMax;
        MarkTGrenzen(sheet, fluid, input.units, drawn.result.DBTMin, drawn.result.DBTMax);
    }
    return drawn;
}

Message isochore_notice() {
    Message notice;
    notice.title = "One-time notice";
    notice.text =
        "Recommendation:\nThen add the coexistence curve V-L \nand the tie line to better interpret \n"
        "the drawn isochore(s).\nUse different colors for each of the inserts.\nZoom if necessary.\n"
        "See also the section \"Isochores\" \nin the QUOM HTML Help.";
    return notice;
}

}  // namespace quom
