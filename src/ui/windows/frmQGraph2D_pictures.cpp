// The diagram for other programs and on paper. What is asked may last: the window, and the sheet with it, may
// have gone meanwhile, so that everything here works on the frame and looks for the sheet again.
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>

#include "base/files.h"
#include "diagrams/diagram_file.h"
#include "forms/picture_form.h"
#include "report/sheet_columns.h"
#include "ui/charts/sheet_picture.h"
#include "ui/charts/sheet_view.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/table_copy.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/picture_actions.h"
#include "ui/windows/picture_dialogs.h"

namespace quom {

namespace {

// The sheet of the session; the user is told when there is none.
const GraphDocument* sheet_of(mdiQUOM& frame) {
    const auto& sheet = frame.session().diagram.sheet;
    if (!sheet) frame.bench().tell(no_sheet_message());
    return sheet ? &*sheet : nullptr;
}

void say(mdiQUOM& frame, const QString& text) {
    if (auto* window = frame.child<frmQGraph2D>()) window->lblStatus->setText(text);
}

FileQuestion file_question(const Session& session, const char* title, const char* filter,
                           const std::string& format) {
    const DiagramSession& d = session.diagram;
    const std::string& folder = d.Folder.empty() ? session.ProgramPath : d.Folder;
    return {.title = QLatin1String(title),
            .start = QString::fromStdString(join_path(folder, picture_name(session) + "." + format)),
            .filter = QLatin1String(filter),
            .suffix = QString::fromStdString(format)};
}

// Asks for the file and writes the sheet into it.
void save_as(mdiQUOM& frame, const FileQuestion& question, const PictureSize& size) {
    bool there = true;
    const QString path = save_picture_as(frame, question, [&](const std::string& to) {
        const auto& sheet = frame.session().diagram.sheet;
        there = sheet.has_value();
        return there ? sheet_picture(*sheet, to, size) : std::string();
    });
    if (!there) frame.bench().tell(no_sheet_message());
    if (path.isEmpty() || !there) return;
    const QFileInfo file(path);
    frame.session().diagram.Folder = file.absolutePath().toStdString();
    say(frame, QStringLiteral("saved: ") + file.fileName());
}

}  // namespace

void frmQGraph2D::copy_picture() {
    mdiQUOM& frame = frame_;
    const PictureSize size = size_on_screen(*chart);
    ClipboardDialog dialog(frame.bench().memory, &frame);
    if (dialog.exec() != QDialog::Accepted) return;
    const GraphDocument* sheet = sheet_of(frame);
    if (!sheet) return;
    const auto picture = [&](const std::string& format, const PictureSize& wanted) {
        return sheet_picture_bytes(*sheet, format, wanted);
    };
    auto data = clipboard_picture(frame, picture, dialog.vector(), size);
    if (!data) return;
    QApplication::clipboard()->setMimeData(data.release());
    say(frame, QStringLiteral("copied to the clipboard: ") +
                   (dialog.vector() ? QStringLiteral("vector image") : QStringLiteral("bitmap image")));
}

void frmQGraph2D::save_image() {
    save_as(frame_,
            file_question(frame_.session(), "Save Image File",
                          "Bitmap-file (*.BMP);;Windows MetaFile (*.WMF);;Enhanced MetaFile (*.EMF)", "bmp"),
            size_on_screen(*chart));
}

void frmQGraph2D::save_picture() {
    mdiQUOM& frame = frame_;
    PictureSizeDialog dialog(frame.bench().memory, &frame);
    if (dialog.exec() != QDialog::Accepted || !sheet_of(frame)) return;
    const std::string format = dialog.format();
    const char* filter = format == "png"   ? "PNG picture (*.png)"
                         : format == "svg" ? "SVG picture (*.svg)"
                                           : "PDF page (*.pdf)";
    save_as(frame, file_question(frame.session(), "Save Image File", filter, format), dialog.size());
}

void frmQGraph2D::print() {
    mdiQUOM& frame = frame_;
    const GraphDocument* sheet = sheet_of(frame);
    if (!sheet) return;
    if (const auto question = print_question(*sheet))
        if (frame.bench().tell(*question) != Answer::yes || !(sheet = sheet_of(frame))) return;
    // The pages are those of now, also while the preview is open.
    const PrintedPage page{.title = windowTitle().simplified(), .paint = [shown = *sheet](QPrinter& printer) {
                               return print_sheet(shown, printer);
                           }};
    if (!frame.dialogs().print_page(&frame, page))
        frame.bench().tell(refusal_message("The printer cannot be used."));
}

void frmQGraph2D::copy_data() {
    const SheetData data = sheet_data(frame_.session());
    if (data.refusal) {
        frame_.bench().tell(*data.refusal);
        return;
    }
    const Waiting waiting;
    const Options& options = frame_.bench().document().options;
    const char decimal = options.DezimalKomma ? ',' : '.';
    copy_table(data.table, sheet_csv(data.table, options.SepCSV, decimal));
    say(frame_, QStringLiteral("copied to the clipboard: data of the diagram"));
}

void frmQGraph2D::save_data() {
    const SheetData data = sheet_data(frame_.session());
    if (data.refusal)
        frame_.bench().tell(*data.refusal);
    else
        save_table(&frame_, data.table, QString::fromStdString(picture_name(frame_.session())));
}

}  // namespace quom
