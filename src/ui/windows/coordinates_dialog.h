// The limits of the axes of the sheet, typed in.
#pragma once
#include <QDialog>

#include "forms/sheet_form.h"

class QPushButton;

namespace quom {

class NumberBox;
class Workbench;

class CoordinatesDialog : public QDialog {
    Q_OBJECT
 public:
    CoordinatesDialog(Workbench& bench, QWidget* parent);
    NumberBox* limit[4];  // as CoordinateBox
    QPushButton *cmdOK, *cmdCancel;

 private:
    void take();
    Workbench& bench_;
};

}  // namespace quom
