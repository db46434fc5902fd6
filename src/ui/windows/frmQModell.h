// Choosing the models of a substance: the switching center of the program.
#pragma once
#include <QWidget>
#include <memory>

class QAbstractButton;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace quom {

class mdiQUOM;
class ValueBox;
struct ModelForm;

class frmQModell : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQModell";
    static void open(mdiQUOM& frame);
    explicit frmQModell(mdiQUOM& frame);
    ~frmQModell() override;

    QComboBox* EOSKombi;
    QComboBox* pkombi;
    QComboBox* HLVKombi;
    QComboBox* cpKombi;
    QComboBox* WatsonKombi;
    QLabel* lblWatson;
    QRadioButton* PriorOpt[2];  // GLOBAL, PARTIAL
    ValueBox* rhoL_available;
    ValueBox* rhoL_validity;
    QAbstractButton *EOSHilfe, *PriorHilfe, *pHilfe, *HLVHilfe, *cpHilfe, *rhoLHilfe;
    QPushButton* cmdOKModell;

 private:
    void build_layout();
    void connect_controls();
    void fill();       // the form anew from the document
    void show_form();  // lists, concept and exponent as the form has them
    void changed();    // a selection differs from the confirmed one
    void type_virial_constants();
    void choose_eos();
    void confirm();

    mdiQUOM& frame_;
    std::unique_ptr<ModelForm> form_;
};

}  // namespace quom
