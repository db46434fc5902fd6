// Charts for other programs: pictures on the clipboard and in files. A chart is here what gives the bytes of
// its picture in a format and a size.
#pragma once
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "forms/picture_size.h"

class QMimeData;
class QWidget;

namespace quom {

class mdiQUOM;
struct FileQuestion;
struct PictureBytes;

// A cursor of waiting while a large picture is drawn.
class Waiting {
 public:
    Waiting();
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
};

// The size of a chart on the screen, so that labels moved by hand stand where they are seen.
PictureSize size_on_screen(const QWidget& chart);

using PictureOf = std::function<PictureBytes(const std::string& format, const PictureSize& size)>;
// The picture in a form for the clipboard: vectors with pixels for programs that know none, or pixels alone.
// Null, and the user is told, where it cannot be made.
std::unique_ptr<QMimeData> clipboard_picture(mdiQUOM& frame, const PictureOf& picture, bool vector,
                                             const PictureSize& size);

// Asks for the file, completes its name and has it written; the fault that comes back is told. Returns the
// path; empty when nothing was written.
QString save_picture_as(mdiQUOM& frame, const FileQuestion& question,
                        const std::function<std::string(const std::string& path)>& write);

}  // namespace quom
