// The splash window of the start.
#pragma once
#include <QWidget>

namespace quom {

class frmPhantom : public QWidget {
    Q_OBJECT
 public:
    frmPhantom();

 protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quom
