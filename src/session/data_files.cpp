#include "session/data_files.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/code_page.h"
#include "base/dates.h"
#include "base/files.h"
#include "fitting/baq_file.h"
#include "fitting/xy_file.h"
#include "substance/database.h"

namespace quom {
namespace {

constexpr std::size_t LargestFile = std::size_t{64} << 20;  // bytes

void refuse(Messages& messages, const std::string& why) {
    messages.ask({.title = "Execution not possible", .text = why, .kind = MessageKind::stop});
}

bool ask(Messages& messages, std::string text, Answer default_button) {
    return messages.ask({.title = "WARNING",
                         .text = std::move(text),
                         .buttons = Buttons::yes_no,
                         .default_button = default_button,
                         .kind = MessageKind::warning}) == Answer::yes;
}

constexpr const char* UnknownSubstance = "substance not found in the present database";

// May data of this substance be loaded? The user is asked where it is not the one in force.
bool is_wanted(const Session& session, const std::string& CAS, Messages& messages) {
    const int in_force = session.document.substance.StoffIndexAktiv;
    const int index = FindCAS(session.database, CAS);
    if (index == in_force && index != 0) return true;
    if (index != 0)
        return ask(messages,
                   "You are trying to load a data set \nfor a different substance!\n"
                   "Load T-p-rho data anyway?",
                   Answer::no);
    if (!ask(messages, std::string(UnknownSubstance) + "\n    Load data anyway?", Answer::no)) return false;
    if (in_force != 0) return true;
    messages.ask({.title = "WARNING", .text = "Load a substance!", .kind = MessageKind::warning});
    return false;
}

// The place of a file that is to be written, with the extension where the name has none.
std::string place_for(const std::string& path, const char* extension, const Session& session) {
    const std::string name = name_part(path);
    const bool has_extension = name.find('.', 1) != std::string::npos;
    return absolute_path(resolve_path(has_extension ? path : path + extension, session.ProgramPath));
}

// Writes a file and tells what could not be written.
bool write(const std::string& path, const Encoded& content, Messages& messages) {
    if (const std::string fault = write_file_atomic(path, content.bytes); !fault.empty()) {
        refuse(messages, fault);
        return false;
    }
    if (content.replaced > 0)
        messages.ask({.title = "Note",
                      .text = std::to_string(content.replaced) +
                              " character(s) cannot be stored in the file and were written as \"?\"."});
    return true;
}

struct Loaded {
    std::string path;   // absolute
    std::string bytes;  // of the file
    bool good = false;
};
Loaded load(const std::string& path, const Session& session, std::string& fault) {
    Loaded loaded{absolute_path(resolve_path(path, session.ProgramPath)), {}, false};
    FileBytes file = read_file(loaded.path, LargestFile);
    fault = std::move(file.fault);
    if (!file.bytes) return loaded;
    loaded.bytes = std::move(*file.bytes);
    loaded.good = true;
    return loaded;
}

}  // namespace

bool LoadExpDataFile(Session& session, const std::string& path, bool add, Messages& messages) {
    if (path.empty()) return false;
    std::string fault;
    const Loaded loaded = load(path, session, fault);
    BaqResult read;
    if (loaded.good) {
        read = read_baq(loaded.bytes, name_part(loaded.path));
        fault = read.fault;
    }
    if (!read.file) {
        refuse(messages, fault);
        return false;
    }
    BaqFile& file = *read.file;
    if (!is_wanted(session, file.CAS, messages)) return false;

    Document document = session.document;
    ExperimentalData& data = document.exp;
    const bool joined = add && data_point_count(data) > 0;
    if (joined) {
        std::vector<TpRhoPoint>& points = data.points.edit();
        if (file.points.size() > MaxDataPoints + 1 - std::min(MaxDataPoints, points.size())) {
            refuse(messages, "More than " + std::to_string(MaxDataPoints) + " points are not possible.");
            return false;
        }
        points.insert(points.end(), file.points.begin() + 1, file.points.end());
    } else {
        file.points.front() = data.points.front();
        data.points = SharedVector<TpRhoPoint>(std::move(file.points));
        data.file.ExpFile = loaded.path;
        data.file.ExpTitle = name_part(loaded.path);
    }
    data.file.ExpDate = file.date;
    data.file.ExpComment = file.comment;
    data.file.ExpCAS = file.CAS;
    data.file.ExpName = file.name;
    data.ExpGeaendert = joined;
    if (document.calc.CurrentPoint > data_point_count(data)) document.calc.CurrentPoint = 0;
    commit(session, std::move(document));
    session.shell.ExpFolder = folder_part(loaded.path);
    if (!file.note.empty())
        messages.ask({.title = "Note", .text = name_part(loaded.path) + "\n" + file.note});
    return true;
}

bool SaveExpData(Session& session, const std::string& path, Messages& messages) {
    if (path.empty()) return false;
    Document document = session.document;
    ExperimentalData& data = document.exp;
    if (data_point_count(data) == 0) {
        refuse(messages, "no data available ");
        return false;
    }
    const std::string place = place_for(path, ".BAQ", session);
    std::error_code unknown;
    if (std::filesystem::exists(place, unknown) &&
        !ask(messages, "such a file is already existing\nOverwright?", Answer::no))
        return false;
    data.file.ExpFile = place;
    data.file.ExpTitle = name_part(place);
    data.file.ExpDate = today_text();
    if (data.file.ExpCAS.empty()) {
        data.file.ExpCAS = session.substance().StoffCAS;
        data.file.ExpName = session.substance().StoffName;
    }
    if (!write(place, baq_bytes(data), messages)) return false;
    data.ExpGeaendert = false;
    commit(session, std::move(document));
    session.shell.ExpFolder = folder_part(place);
    return true;
}

bool SaveTYAsXY(const Session& session, const std::string& path, Messages& messages) {
    if (path.empty()) return false;
    const ExperimentalData& data = session.document.exp;
    if (data_point_count(data) == 0) {
        refuse(messages, "no data available ");
        return false;
    }
    return write(place_for(path, ".XY", session), T_y_bytes(data, session.document.options.SepXY), messages);
}

bool LoadXYFile(Session& session, const std::string& path, Messages& messages) {
    if (path.empty()) return false;
    std::string fault;
    const Loaded loaded = load(path, session, fault);
    XYResult read;
    if (loaded.good) {
        read = read_xy(loaded.bytes, name_part(loaded.path));
        fault = read.fault;
    }
    if (!read.file) {
        refuse(messages, fault);
        return false;
    }
    Document document = session.document;
    document.xy = {.points = SharedVector<XYPoint>(std::move(read.file->points)),
                   .comment = std::move(read.file->comment),
                   .XYFile = loaded.path,
                   .XYGeaendert = false};
    commit(session, std::move(document));
    session.shell.XYFolder = folder_part(loaded.path);
    return true;
}

bool SaveXYFile(Session& session, const std::string& path, Messages& messages) {
    if (path.empty()) return false;
    const std::string place = place_for(path, ".XY", session);
    Document document = session.document;
    if (!write(place, xy_bytes(document.xy, document.options.SepXY), messages)) return false;
    document.xy.XYFile = place;
    document.xy.XYGeaendert = false;
    commit(session, std::move(document));
    session.shell.XYFolder = folder_part(place);
    return true;
}

std::string xy_loaded_text(const XYData& data) {
    return "  loaded: " + name_part(data.XYFile) + " (" + std::to_string(data.points.size()) + " data lines)";
}

ExpDataHead ExpDataPreview(const std::string& path, const Session& session) {
    ExpDataHead head;
    const Loaded loaded = load(path, session, head.fault);
    if (!loaded.good) return head;
    const BaqResult read = read_baq(loaded.bytes, name_part(loaded.path));
    head.fault = read.fault;
    if (!read.file) return head;
    const BaqFile& file = *read.file;
    head.date = file.date;
    head.comment = file.comment;
    head.CAS = file.CAS;
    head.name = file.name;
    head.note = file.note;
    head.in_database = FindCAS(session.database, file.CAS) != 0;
    head.ExpAnzahl = static_cast<int>(file.points.size()) - 1;
    head.substance_text = !head.in_database   ? UnknownSubstance
                          : head.name.empty() ? head.CAS
                                              : head.name + "  (" + head.CAS + ")";
    head.data_text = std::to_string(head.ExpAnzahl) + "  experimental points";
    return head;
}

}  // namespace quom
