// The chart for other programs and on paper.
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include "forms/refusal.h"
#include "ui/charts/state_chart_picture.h"
#include "ui/charts/state_chart_view.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/widgets/table_copy.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmStateChart.h"

namespace quom {

namespace {

constexpr double bitmap_dpi = 192;
const QString FolderKey = QStringLiteral("chart/folder");

// As it is on the screen.
PictureSize size_of(const QWidget& shown) {
    const auto mm = [](int pixels) { return pixels / 96.0 * 25.4; };
    return {.width = mm(shown.width()), .height = mm(shown.height()), .dpi = bitmap_dpi};
}

}  // namespace

// Proposed for files: "Propane log p-h".
QString frmStateChart::picture_name() const {
    QString name = QString::fromStdString(frame_.session().substance().StoffName) + QLatin1Char(' ') +
                   cboKind->currentText();
    for (QChar& c : name)
        if (QStringLiteral("/\\:*?\"<>|").contains(c)) c = QLatin1Char('-');
    return name.simplified();
}

void frmStateChart::copy_picture() {
    auto* forms = new QMimeData;
    // Programs take the first that they know.
    for (const auto& [mime, format] : {std::pair{"image/x-emf", "emf"}, {"image/svg+xml", "svg"}})
        forms->setData(QLatin1String(mime),
                       state_chart_bytes(chart->chart(), format, size_of(*chart), form_.black).bytes);
    forms->setImageData(
        QImage::fromData(state_chart_bytes(chart->chart(), "png", size_of(*chart), form_.black).bytes));
    QGuiApplication::clipboard()->setMimeData(forms);
    say(QStringLiteral("copied to the clipboard: the chart"));
}

void frmStateChart::save_picture() {
    Workbench& bench = frame_.bench();
    const QString folder = bench.memory.value(FolderKey).toString();
    const std::string path = ask_save_path(
        frame_,
        {.title = QStringLiteral("Save Image File"),
         .start = QDir(folder.isEmpty() ? QString::fromStdString(frame_.session().ProgramPath) : folder)
                      .filePath(picture_name() + QStringLiteral(".png")),
         .filter =
             QStringLiteral("PNG picture (*.png);;PDF page (*.pdf);;SVG picture (*.svg);;Enhanced MetaFile "
                            "(*.emf);;Windows MetaFile (*.wmf);;Bitmap-file (*.bmp)"),
         .suffix = QStringLiteral("png")});
    if (path.empty()) return;
    const std::string fault = state_chart_picture(chart->chart(), path, state_chart_size, form_.black);
    if (!fault.empty()) {
        bench.tell(refusal_message(fault));
        return;
    }
    const QFileInfo file(QString::fromStdString(path));
    bench.memory.set(FolderKey, file.absolutePath());
    say(QStringLiteral("saved: ") + file.fileName());
}

// On paper the sheet is white.
void frmStateChart::print() {
    QPrinter printer;
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(windowTitle().simplified());
    QPrintPreviewDialog preview(&printer, this);
    preview.setWindowTitle(windowTitle().simplified());
    bool good = true;
    const StateChart shown = chart->chart();
    connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
            [&](QPrinter* on) { good = print_state_chart(shown, *on); });
    preview.exec();
    if (!good) frame_.bench().tell(refusal_message("The printer cannot be used."));
}

void frmStateChart::copy_data() {
    copy_table(chart_table(chart->chart()));
    say(QStringLiteral("copied to the clipboard: data of the chart"));
}

void frmStateChart::save_data() { save_table(this, chart_table(chart->chart()), picture_name()); }

}  // namespace quom
