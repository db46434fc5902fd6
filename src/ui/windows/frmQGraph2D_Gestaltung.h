// The design of the sheet: every control writes to the sheet at once, closing commits nothing.
#pragma once
#include <array>
#include <vector>

#include "forms/design_form.h"
#include "ui/windows/input_window.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QTabWidget;
class QVBoxLayout;

namespace quom {

class ColourGrid;
class DesignBox;
class NumberBox;
class frmQGraph2D;
class mdiQUOM;

class frmQGraph2D_Gestaltung : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQGraph2D_Gestaltung";
    // Opens the window on a page, with the focus in the row or the text of the target; of it the control with
    // that name where one is given.
    static frmQGraph2D_Gestaltung* open(mdiQUOM& frame, DesignPage page, const DesignTarget& target = {},
                                        const char* control = nullptr);
    explicit frmQGraph2D_Gestaltung(mdiQUOM& frame);

    // Shows the sheet as it is now.
    void refresh();
    void show_page(DesignPage page, const DesignTarget& target, const char* control = nullptr);

    QTabWidget* tabs;
    QComboBox* cmbText;                          // of the texts
    NumberBox *txtCoord[4], *txtTabCoord[3][2];  // limits: of the sheet, of each axis
    QPushButton *cmdCoord_OK, *cmdTabCoord_OK[2];
    QPushButton *cmdDelSinglePoint, *cmdPunkteGST_Close;

 private:
    // One row or one page of controls.
    struct Group {
        DesignPage page;
        DesignTarget target;
        std::vector<DesignBox*> boxes;
        QWidget* number = nullptr;  // head of a row
    };
    // frmQGraph2D_Gestaltung_tabs
    void make_tabs();
    void add_rows(QVBoxLayout* column, DesignPage page, int rows, const char* letter);
    void add_form(QVBoxLayout* column, DesignPage page);
    void add_form_control(QGridLayout* grid, const std::vector<DesignBox*>& boxes, std::size_t i);
    QWidget* limits_group(DesignPage page);
    DesignBox* add_box(Group& group, const DesignControl& control, const QString& suffix,
                       const QString& whose, QWidget* parent);

    frmQGraph2D* graph() const;
    void show_rows(const Group& group, bool used);
    void show_texts();
    void show_limits();
    void show_title();
    void set(Group& group, DesignBox& box, const DesignValue& value);
    void ask_color(Group& group, DesignBox& box);
    void take_limits(NumberBox* const* boxes, std::size_t first, std::size_t count, LimitsIn where);
    void changed();  // the sheet, by this window

    mdiQUOM& frame_;
    std::vector<std::unique_ptr<Group>> groups_;
    std::array<QLabel*, DesignPages> hints_{};
    ColourGrid* colours_;
    Group* colour_group_ = nullptr;
    DesignBox* colour_box_ = nullptr;
    TextRef text_{};
    bool filling_ = false;
};

}  // namespace quom
