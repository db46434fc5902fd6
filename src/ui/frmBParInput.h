// The constants of the virial equation typed by hand: B = b0 - b1/T^b2.
#pragma once
#include <QDialog>

class QPushButton;

namespace quom {

class NumberBox;
struct Session;

class frmBParInput : public QDialog {
    Q_OBJECT
 public:
    frmBParInput(Session& session, QWidget* parent);

    NumberBox* par[3];  // b0, b1, b2
    QPushButton* cmdParameter_OK;
    QPushButton* cancel;

 private:
    void take();
    Session& session_;
};

}  // namespace quom
