// The chart for other programs and on paper.
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>

#include "forms/picture_form.h"
#include "ui/charts/state_chart_picture.h"
#include "ui/charts/state_chart_view.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/table_copy.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmStateChart.h"
#include "ui/windows/picture_actions.h"
#include "ui/windows/picture_dialogs.h"

namespace quom {

namespace {

const QString FolderKey = QStringLiteral("chart/folder");

}  // namespace

// Proposed for files: "Propane log p-h".
QString frmStateChart::picture_name() const {
    return QString::fromStdString(
        file_name_of(frame_.session().substance().StoffName + " " + cboKind->currentText().toStdString()));
}

// What is asked may last, and the window may have gone meanwhile: the chart is that of before.
void frmStateChart::copy_picture() {
    mdiQUOM& frame = frame_;
    const PictureSize size = size_on_screen(*chart);
    const auto picture = [shown = chart->chart(), black = form_.black](const std::string& format,
                                                                       const PictureSize& wanted) {
        return state_chart_bytes(shown, format, wanted, black);
    };
    ClipboardDialog dialog(frame.bench().memory, &frame);
    if (dialog.exec() != QDialog::Accepted) return;
    auto data = clipboard_picture(frame, picture, dialog.vector(), size);
    if (!data) return;
    QGuiApplication::clipboard()->setMimeData(data.release());
    if (auto* window = frame.child<frmStateChart>())
        window->say(QStringLiteral("copied to the clipboard: the chart"));
}

void frmStateChart::save_picture() {
    mdiQUOM& frame = frame_;
    UiMemory& memory = frame.bench().memory;
    const QString folder = memory.value(FolderKey).toString();
    const QString path = save_picture_as(
        frame,
        {.title = QStringLiteral("Save Image File"),
         .start = QDir(folder.isEmpty() ? QString::fromStdString(frame.session().ProgramPath) : folder)
                      .filePath(picture_name() + QStringLiteral(".png")),
         .filter =
             QStringLiteral("PNG picture (*.png);;PDF page (*.pdf);;SVG picture (*.svg);;Enhanced MetaFile "
                            "(*.emf);;Windows MetaFile (*.wmf);;Bitmap-file (*.bmp)"),
         .suffix = QStringLiteral("png")},
        [shown = chart->chart(), black = form_.black](const std::string& to) {
            return state_chart_picture(shown, to, state_chart_size, black);
        });
    if (path.isEmpty()) return;
    const QFileInfo file(path);
    memory.set(FolderKey, file.absolutePath());
    if (auto* window = frame.child<frmStateChart>()) window->say(QStringLiteral("saved: ") + file.fileName());
}

// On paper the sheet is white.
void frmStateChart::print() {
    // The pages are those of now, also while the preview is open.
    const PrintedPage page{
        .title = windowTitle().simplified(),
        .paint = [shown = chart->chart()](QPrinter& printer) { return print_state_chart(shown, printer); }};
    if (!frame_.dialogs().print_page(&frame_, page))
        frame_.bench().tell(refusal_message("The printer cannot be used."));
}

void frmStateChart::copy_data() {
    copy_table(chart_table(chart->chart()));
    say(QStringLiteral("copied to the clipboard: data of the chart"));
}

void frmStateChart::save_data() { save_table(this, chart_table(chart->chart()), picture_name()); }

}  // namespace quom
