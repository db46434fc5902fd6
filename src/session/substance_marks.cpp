#include "session/substance_marks.h"

#include <utility>

#include "base/files.h"

namespace quom {
namespace {

constexpr MarkKind kinds[] = {MarkKind::estimate, MarkKind::fit, MarkKind::extrapolated};

}  // namespace

SubstanceMarks substance_marks(const std::string& ProgramPath, const SubstanceConstants& substance) {
    if (substance.StoffCAS.empty()) return {};
    MarkTable table;
    const std::string path = find_in_folder(ProgramPath, MarksFile);
    if (path.empty()) {
        table.fault = std::string("There is no ") + MarksFile +
                      " in the program folder: estimates and fits are not told apart.";
    } else {
        const FileBytes file = read_file(path);
        if (file.bytes)
            table = read_marks(*file.bytes);
        else
            table.fault = file.fault;
    }
    return {.marks = marks_on(substance, table), .fault = std::move(table.fault)};
}

std::vector<std::string> sentences(const SubstanceMarks& marks) {
    std::vector<std::string> texts;
    for (const SetMark& mark : marks.marks) texts.push_back(mark_sentence(mark));
    if (!marks.fault.empty()) texts.push_back(marks.fault);
    return texts;
}

std::string one_line(const SubstanceMarks& marks) {
    std::string line;
    for (const MarkKind kind : kinds) {
        bool first = true;
        for (const SetMark& mark : marks.marks) {
            if (mark.kind != kind) continue;
            if (first) line.append(line.empty() ? "" : "; ").append(mark_word(kind)).append(": ");
            line.append(first ? "" : ", ").append(mark.set->label);
            first = false;
        }
    }
    if (!marks.fault.empty()) line.append(line.empty() ? "" : "; ").append(marks.fault);
    return line;
}

}  // namespace quom
