// The box of the parameter of the next curve: T, p or v of its section. While its slider moves, the curve
// follows on the sheet.
#pragma once
#include "forms/live_curve.h"
#include "ui/windows/input_window.h"

class QLabel;
class QPushButton;
class QSlider;

namespace quom {

class NumberBox;
class mdiQUOM;

class frmTpVSInputBox : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmTpVSInputBox";
    // Shows the box beside the sheet, with the value that is offered now.
    static frmTpVSInputBox* open(mdiQUOM& frame);
    explicit frmTpVSInputBox(mdiQUOM& frame);

    // The curve in hand takes its place among the next ones: its value is the parameter from now on.
    void settle();
    void drop_curve();
    // Draws the curve in hand, if there is one, with the colour that is picked now.
    void recolour_curve();

    QLabel *lblSection, *lblParameter, *lblHint, *lblReason;
    NumberBox* txtParameter;
    QSlider* sldParameter;
    QPushButton *cmdOK, *cmdAbbrechen, *cmdOKAndDraw;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build_layout();
    void show_offer();
    void take(bool draw);
    void slide(int position);
    void follow();
    void typed();
    mdiQUOM& frame_;
    std::optional<ParameterScale> scale_;
    LiveCurve live_;
};

}  // namespace quom
