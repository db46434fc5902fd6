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
struct ModelList;

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
    void fill();          // the lists as the substance allows, and the reactions of what is selected
    void show_concept();  // concept, its options, and the list of delta(LV)h, after a choice of the EOS
    void show_watson();
    void changed();  // a selection differs from the confirmed one
    void choose_eos();
    void confirm();

    mdiQUOM& frame_;
    std::unique_ptr<ModelList> hlv_;
};

}  // namespace quom
