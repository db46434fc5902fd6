// The diagram for other programs and on paper. What is asked may last: the window, and the sheet with it, may
// have gone meanwhile, so that everything here works on the frame and looks for the sheet again.
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <memory>

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
#include "ui/windows/picture_dialogs.h"

namespace quom {

namespace {

constexpr double screen_dpi = 96, bitmap_dpi = 192;

// A cursor of waiting while a large picture is drawn.
struct Waiting {
    Waiting() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Waiting() { QApplication::restoreOverrideCursor(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
};

// The sheet of the session; the user is told when there is none.
const GraphDocument* sheet_of(mdiQUOM& frame) {
    const auto& sheet = frame.session().diagram.sheet;
    if (!sheet) frame.bench().tell(no_sheet_message());
    return sheet ? &*sheet : nullptr;
}

void say(mdiQUOM& frame, const QString& text) {
    if (auto* window = frame.child<frmQGraph2D>()) window->lblStatus->setText(text);
}

// The size of the chart on the screen, so that labels moved by hand stand where they are seen.
PictureSize size_on_screen(const QWidget& chart) {
    const auto mm = [](int pixels) { return pixels / screen_dpi * 25.4; };
    return {.width = mm(chart.width()), .height = mm(chart.height()), .dpi = bitmap_dpi};
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
    const QString typed = frame.dialogs().save_file(&frame, question).value_or(QString());
    if (typed.isEmpty()) return;
    const std::string path = picture_path(typed.toStdString(), question.suffix.toStdString());
    const QFileInfo file(QString::fromStdString(path));
    if (path != typed.toStdString() && file.exists() &&
        frame.bench().tell(replace_question(path)) != Answer::yes)
        return;
    const GraphDocument* sheet = sheet_of(frame);
    if (!sheet) return;
    std::string fault;
    {
        const Waiting waiting;
        fault = sheet_picture(*sheet, path, size);
    }
    if (!fault.empty()) {
        frame.bench().tell(refusal_message(fault));
        return;
    }
    frame.session().diagram.Folder = file.absolutePath().toStdString();
    say(frame, QStringLiteral("saved: ") + file.fileName());
}

// The picture in a form for the clipboard; null with a message where it cannot be made.
QMimeData* clipboard_picture(mdiQUOM& frame, const GraphDocument& sheet, bool vector,
                             const PictureSize& size) {
    struct Form {
        const char* mime;
        const char* format;
    };
    // Programs take the first that they know; the pixels are for those that know no vectors.
    constexpr Form forms[] = {{"image/x-emf", "emf"}, {"image/svg+xml", "svg"}, {"image/png", "png"}};
    const Waiting waiting;
    auto data = std::make_unique<QMimeData>();
    for (const Form& form : forms) {
        const bool pixels = has_pixels(form.format);
        if (!vector && !pixels) continue;
        const PictureBytes picture = sheet_picture_bytes(sheet, form.format, size);
        if (!picture.fault.empty()) {
            frame.bench().tell(refusal_message(picture.fault));
            return nullptr;
        }
        if (vector)
            data->setData(QLatin1String(form.mime), picture.bytes);
        else
            data->setImageData(QImage::fromData(picture.bytes));
    }
    return data.release();
}

}  // namespace

void frmQGraph2D::copy_picture() {
    mdiQUOM& frame = frame_;
    const PictureSize size = size_on_screen(*chart);
    ClipboardDialog dialog(frame.bench().memory, &frame);
    if (dialog.exec() != QDialog::Accepted) return;
    const GraphDocument* sheet = sheet_of(frame);
    if (!sheet) return;
    QMimeData* data = clipboard_picture(frame, *sheet, dialog.vector(), size);
    if (!data) return;
    QApplication::clipboard()->setMimeData(data);
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
