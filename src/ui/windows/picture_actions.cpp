#include "ui/windows/picture_actions.h"

#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>

#include "forms/picture_form.h"
#include "ui/charts/picture_file.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"

namespace quom {

namespace {

constexpr double screen_dpi = 96, bitmap_dpi = 192;

struct ClipboardForm {
    const char* mime;
    const char* format;
};
// Programs take the first that they know.
constexpr ClipboardForm ClipboardForms[] = {
    {"image/x-emf", "emf"}, {"image/svg+xml", "svg"}, {"image/png", "png"}};

}  // namespace

Waiting::Waiting() { QApplication::setOverrideCursor(Qt::WaitCursor); }
Waiting::~Waiting() { QApplication::restoreOverrideCursor(); }

PictureSize size_on_screen(const QWidget& chart) {
    const auto mm = [](int pixels) { return pixels / screen_dpi * 25.4; };
    return {.width = mm(chart.width()), .height = mm(chart.height()), .dpi = bitmap_dpi};
}

std::unique_ptr<QMimeData> clipboard_picture(mdiQUOM& frame, const PictureOf& picture, bool vector,
                                             const PictureSize& size) {
    const Waiting waiting;
    auto data = std::make_unique<QMimeData>();
    for (const ClipboardForm& form : ClipboardForms) {
        if (!vector && !has_pixels(form.format)) continue;
        const PictureBytes made = picture(form.format, size);
        if (!made.fault.empty()) {
            frame.bench().tell(refusal_message(made.fault));
            return nullptr;
        }
        if (vector)
            data->setData(QLatin1String(form.mime), made.bytes);
        else
            data->setImageData(QImage::fromData(made.bytes));
    }
    return data;
}

QString save_picture_as(mdiQUOM& frame, const FileQuestion& question,
                        const std::function<std::string(const std::string& path)>& write) {
    const QString typed = frame.dialogs().save_file(&frame, question).value_or(QString());
    if (typed.isEmpty()) return {};
    const std::string path = picture_path(typed.toStdString(), question.suffix.toStdString());
    const QString completed = QString::fromStdString(path);
    if (completed != typed && QFileInfo::exists(completed) &&
        frame.bench().tell(replace_question(path)) != Answer::yes)
        return {};
    std::string fault;
    {
        const Waiting waiting;
        fault = write(path);
    }
    if (fault.empty()) return completed;
    frame.bench().tell(refusal_message(fault));
    return {};
}

}  // namespace quom
