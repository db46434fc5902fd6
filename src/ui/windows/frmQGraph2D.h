// The window of two-dimensional diagrams: the sheet of the session, its commands and its menus.
#pragma once
#include <QWidget>

#include "diagrams/graph_view.h"
#include "forms/sheet_form.h"

class QAction;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QStatusBar;

namespace quom {

class ColourGrid;
class SheetView;
class TrafficLights;
class mdiQUOM;
struct SheetHit;

class frmQGraph2D : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmQGraph2D";
    // Shows the sheet of the session; there is one window.
    static frmQGraph2D* open(mdiQUOM& frame);
    explicit frmQGraph2D(mdiQUOM& frame);

    // While armed, a click on a point of any curve offers its deletion, once.
    void arm_point_deletion(bool on);
    bool point_deletion_armed() const { return point_deletion_armed_; }

    // Shows the sheet, its menus and commands as they are now. To be called after every change of it.
    void refresh();

    QMenuBar* menus;
    QMenu *mnuBildsenden, *mnuInsert, *mnuDelete;
    QAction* mnuCoord;
    QPushButton *cmdDraw, *cmdZInput, *cmdZoom, *cmdZoomReset, *cmdChangeXY, *cmdFarbe, *cmdFarbVorwahl,
        *cmdEscGraph;
    ColourGrid* colours;
    SheetView* chart;
    QLabel *lblX, *lblY, *lblPoint;  // what the mouse is at
    QStatusBar* StatusBar2;
    TrafficLights* txtFarbeStatusbar2;
    QLabel* lblStatus;

 signals:
    void refreshed();

 private:
    // frmQGraph2D_layout
    void make_controls();
    void build_layout();
    // frmQGraph2D_menus
    void make_menus();
    QAction* add_entry(QMenu* menu, const char* name, const QString& caption, void (frmQGraph2D::*run)());
    void show_insert_states();
    void show_delete_entries();
    void choose_insertion(Insertion what);
    void show_context_menu(const QPoint& global);
    void ask_text();
    void toggle_legend();
    void ask_coordinates();
    void save();
    void load();
    // frmQGraph2D_pictures
    void copy_picture();
    void save_image();
    void save_picture();
    void print();
    void copy_data();
    void save_data();

    // frmQGraph2D_design
    void add_design_entries(QMenu* menu, const QPoint& global);
    void connect_drag();
    void drag_part(const SheetHit& part, const QPointF& corner);
    // frmQGraph2D_compare
    void compare();

    void connect_controls();
    std::optional<GraphDocument>& sheet() const;
    void draw();
    void open_parameter_box();
    void zoom_to(const CurveRange& shown);
    void reset_zoom();
    void interchange();
    void show_interchanged();
    void pick_colour(const QColor& colour);
    void show_colour();
    void to_background();
    void show_mouse(double x, double y, const std::optional<PointRef>& point);
    void ask_point(const PointRef& point);
    void session_changed();

    mdiQUOM& frame_;
    std::optional<GraphDocument> before_drag_;
    bool point_deletion_armed_ = false;
};

}  // namespace quom
