// The constants of the virial equation typed by hand: B = b0 - b1/T^b2.
#pragma once
#include <QDialog>

#include "engine/models.h"

class QPushButton;

namespace quom {

class NumberBox;

// Accepted: constants() are those of the boxes.
class frmBParInput : public QDialog {
    Q_OBJECT
 public:
    frmBParInput(const EosInput& constants, QWidget* parent);
    const EosInput& constants() const { return constants_; }

    NumberBox* par[3];  // b0, b1, b2
    QPushButton* cmdParameter_OK;
    QPushButton* cancel;

 private:
    void take();
    EosInput constants_;
};

}  // namespace quom
