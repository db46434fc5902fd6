// Settings of the program.
#pragma once
#include <QDialog>

#include "forms/options_form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QSlider;

namespace quom {

class Workbench;
class mdiQUOM;

// Accepted: the settings are in the document. Rejected: they are as they were.
class frmQOptions : public QDialog {
    Q_OBJECT
 public:
    explicit frmQOptions(Workbench& bench, QWidget* parent = nullptr);
    // What the OK has changed around the document.
    const OptionsResult& taken() const { return taken_; }

    QRadioButton* optMolarSpez[2];  // molar, specific
    QCheckBox* chkReduziert;
    QRadioButton* OptCalcMode[2];  // batch, direct
    QComboBox *cmbSepCSV, *cmbSepXY;
    QPushButton* cmdNormierung;
    QCheckBox *chkUnloadGraph2D, *chkParSpeichern, *chkPartialKurve, *chkSKurveOhneKonnode,
        *chkCurveTpRestricted;
    QRadioButton* optKurvenMischen[2];  // delete, add
    QSlider* Slider1_punktdichte;
    QLabel *lblSlideMin, *lblSlideMax, *lblDens;
    QPushButton *cmdOK, *cmdClose;

 private:
    QWidget* make_units();
    QWidget* make_calculation();
    QWidget* make_delimiters();
    QWidget* make_reference();
    QWidget* make_diagrams();
    QWidget* make_curves();
    void show_settings(const OptionsInput& input);
    OptionsInput read_settings() const;
    void take();

    Workbench& bench_;
    OptionsInput opened_;
    OptionsResult taken_;
};

// Entries of the main window: the settings, and the reference state of h and s.
void open_options(mdiQUOM& frame, int);
void open_reference_state(mdiQUOM& frame, int);
// Captions of the calculations as the mode has them, batch or direct.
void show_calculation_captions(mdiQUOM& frame);

}  // namespace quom
