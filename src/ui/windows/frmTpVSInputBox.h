// The box of the parameter of the next curve: T, p or v of its section.
#pragma once
#include "ui/windows/input_window.h"

class QLabel;
class QPushButton;

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

    QLabel *lblSection, *lblParameter, *lblHint;
    NumberBox* txtParameter;
    QPushButton *cmdOK, *cmdAbbrechen, *cmdOKAndDraw;

 private:
    void show_offer();
    void take(bool draw);
    mdiQUOM& frame_;
};

}  // namespace quom
