// Choosing the models of a substance: the switching center of the program.
#pragma once
#include <QWidget>
#include <memory>

#include "engine/models.h"
#include "ui/widgets/choice_box.h"

class QAbstractButton;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace quom {

class mdiQUOM;
class ValueBox;
struct Changes;
struct ModelForm;

class frmQModell : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQModell";
    static void open(mdiQUOM& frame);
    explicit frmQModell(mdiQUOM& frame);
    // Asks for the constants of the manual virial equation.
    void type_virial_constants();
    ~frmQModell() override;

    ChoiceBox* EOSKombi;
    ChoiceBox* pkombi;
    ChoiceBox* HLVKombi;
    ChoiceBox* cpKombi;
    QComboBox* WatsonKombi;
    QLabel* lblWatson;
    QRadioButton* PriorOpt[2];  // GLOBAL, PARTIAL
    ValueBox* rhoL_available;
    ValueBox* rhoL_validity;
    QAbstractButton *EOSHilfe, *PriorHilfe, *pHilfe, *HLVHilfe, *cpHilfe, *rhoLHilfe;
    QLabel* lblNext;  // what to do next
    QPushButton* cmdOKModell;

 private:
    void build_layout();
    void connect_controls();
    void fill(bool following = false);  // the form anew from the document
    void show_form();                   // lists, concept and exponent as the form has them
    void show_next();                   // what to do next
    void changed();                     // a selection differs from the confirmed one
    void take_shown();                  // entries of the boxes that are shown and not yet taken
    void choose_eos(bool left);
    void ask_for_constants();  // once after the manual virial equation was chosen
    void confirm();
    void follow(const Changes& changes);

    mdiQUOM& frame_;
    std::unique_ptr<ModelForm> form_;
    ModelSelection shown_models_;  // those of the document that the form was filled from
    EosInput shown_input_;
    bool telling_ = false;           // of a choice made here
    bool constants_wanted_ = false;  // those of the manual virial equation were not yet asked for
};

}  // namespace quom
