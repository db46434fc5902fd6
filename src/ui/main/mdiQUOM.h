// The main window: menus, toolbar, traffic lights, status bar, and the area of all other windows.
#pragma once
#include <QMainWindow>
#include <memory>
#include <string>

#include "forms/shell.h"
#include "ui/main/window_places.h"
#include "ui/main/window_table.h"
#include "ui/main/workbench.h"

class QMdiSubWindow;
class QPushButton;

namespace quom {

class Dialogs;
class FocusReturn;
class HelpWindow;
class MdiArea;
class Palette;
class StartPage;
class TrafficLights;
class mdiMenus;
class StatusPanel;

class mdiQUOM : public QMainWindow {
    Q_OBJECT
 public:
    explicit mdiQUOM(std::string ProgramPath);
    ~mdiQUOM() override;

    // Start-up in its order; project: what the command line names, empty for none.
    void start(const std::string& project);

    Workbench& bench() { return *bench_; }
    Session& session() { return bench_->session; }
    Dialogs& dialogs() { return *dialogs_; }
    void set_dialogs(std::unique_ptr<Dialogs> dialogs);

    // Shows menus, toolbar, status bar and lights as the session is now. To be called after every change of
    // database, substance, models or data points.
    void refresh();

    // The window of this class: the one that is there (it may be hidden), else a new one, made by its row of
    // the table of windows and not yet shown.
    template <class Window>
    Window* find_or_make() {
        return qobject_cast<Window*>(find_or_make(Window::Name));
    }
    QWidget* find_or_make(const char* name);
    // Shows a window. A new one, known by its object name, is put into the area, in the size of its row, at
    // its place, right of `beside` when that is there and has room, and activated; when it closes, the focus
    // goes back to `beside`, else to the window that was active. One that is there comes to the front.
    void open_child(QWidget* window, QWidget* beside = nullptr);
    // Brings a window that is there back to the front.
    void show_child(QWidget* window);
    void hide_child(QWidget* window);
    // The window of this class that is there (it may be hidden); null when there is none.
    QWidget* child(const char* name) const;
    template <class Window>
    Window* child() const {
        return qobject_cast<Window*>(child(Window::Name));
    }
    // Closes and forgets a window.
    void unload(const char* name);
    // Unloads the windows that live no longer than that: those of a calculation, of the substance, of the
    // database. The session itself is reset by ResetSession.
    void unload_windows(Lifetime longest);
    void unload_session_windows() { unload_windows(Lifetime::substance); }
    void unload_calculation_windows() { unload_windows(Lifetime::calculation); }

    // The user was told, as the menu of calculations opened, that a batch has no data points.
    bool told_of_missing_data() const { return told_of_missing_data_; }
    void show_help(int topic);
    // Opens the search over everything, or closes it.
    void toggle_palette();

    MdiArea* area = nullptr;
    StartPage* start_page = nullptr;
    TrafficLights* txtAmpel = nullptr;
    QPushButton* cmdDatenDiagnose = nullptr;
    QPushButton* cmdFind = nullptr;
    QPushButton* cmdErstnutzer = nullptr;
    QPushButton* cmdRechenUebung = nullptr;
    StatusPanel* panels[4] = {};  // of StatusBar1

 protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    void build_toolbar();
    void build_status_bar();
    void share_status_bar();
    void opening_calculation_menu();
    void opening_data_menu();
    void opening_windows_menu();
    void show_steps();                              // captions of undo and redo
    void leave_windows_of(const Document& before);  // those that undo or redo took the ground from

    std::unique_ptr<Messages> boxes_;
    std::unique_ptr<Workbench> bench_;
    std::unique_ptr<Dialogs> dialogs_;
    std::unique_ptr<mdiMenus> menus_;
    WindowPlaces* places_;
    FocusReturn* focus_;
    HelpWindow* help_ = nullptr;
    Palette* palette_ = nullptr;
    QAction* diagnose_shown_ = nullptr;
    bool told_of_missing_data_ = false;
};

}  // namespace quom
