#include "session/history.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/files.h"
#include "session/document_words.h"
#include "substance/database.h"

namespace quom {
namespace {

std::string lines(std::size_t count) { return std::to_string(count) + (count == 1 ? " line" : " lines"); }

std::string substance_name(const Document& document) {
    const ChosenSubstance& s = document.substance;
    return s.StoffIndexAktiv == 0 ? "none" : s.constants.StoffName;
}
std::string database_name(const Document& document) {
    return document.DatabaseKind == 0 ? "none" : name_part(document.DatabasePath);
}

// The measured points, without the direct input.
template <class Point>
struct Rows {
    const SharedVector<Point>& list;
    std::size_t first;
    std::size_t count() const { return list.size() < first ? 0 : list.size() - first; }
    bool operator==(const Rows& other) const {
        return list.shares(other.list) ||
               (count() == other.count() && std::equal(list.begin() + std::ptrdiff_t(first), list.end(),
                                                       other.list.begin() + std::ptrdiff_t(first)));
    }
};
Rows<TpRhoPoint> rows(const ExperimentalData& data) { return {data.points, 1}; }
Rows<XYPoint> rows(const XYData& data) { return {data.points, 0}; }
const std::string& file_of(const ExperimentalData& data) { return data.file.ExpFile; }
const std::string& file_of(const XYData& data) { return data.XYFile; }

// What was done to the rows of a list: "20 lines inserted".
template <class Point>
std::string rows_changed(const Rows<Point>& before, const Rows<Point>& after) {
    const std::size_t old_count = before.count(), new_count = after.count();
    if (new_count > old_count) return lines(new_count - old_count) + " inserted";
    if (new_count == 0) return "all " + lines(old_count) + " deleted";
    if (new_count < old_count) return lines(old_count - new_count) + " deleted";
    std::size_t changed = 0;
    for (std::size_t i = 0; i < new_count; ++i)
        if (before.list[before.first + i] != after.list[after.first + i]) ++changed;
    return lines(changed) + " changed";
}

// Data that differ only in where and when they were saved make no step.
template <class Data>
std::string data_changed(const char* head, const Data& before, const Data& after) {
    if (rows(before) == rows(after)) return {};
    const std::string& file = file_of(after);
    if (!file.empty() && file != file_of(before))
        return std::string(head) + name_part(file) + ", " + lines(rows(after).count());
    return head + rows_changed(rows(before), rows(after));
}

// Texts beside the points that were edited, not merely saved.
std::string texts_changed(const Document& before, const Document& after) {
    if (after.exp.ExpGeaendert && before.exp.file != after.exp.file)
        return "Measured data: texts of the file changed";
    if (after.xy.XYGeaendert && before.xy.comment != after.xy.comment) return "X-Y data: comment changed";
    return {};
}

// Start values of diagrams and of reduced units follow from substance and models.
bool same_units(const Units& a, const Units& b) {
    return a.EnergyMode == b.EnergyMode && a.VolumeMode == b.VolumeMode;
}

bool part_differs(DocumentPart part, const Document& a, const Document& b) {
    switch (part) {
        case DocumentPart::models:
            return a.models != b.models || a.eos_input != b.eos_input;
        case DocumentPart::reference:
            return a.reference != b.reference;
        case DocumentPart::units:
            return !same_units(a.units, b.units);
        case DocumentPart::options:
            return a.options != b.options;
    }
    return false;
}

// "Models: equation of state Peng / Robinson -> Soave, concept GLOBAL -> PARTIAL": at most two fields.
std::string part_changed(DocumentPart part, const Document& before, const Document& after) {
    if (!part_differs(part, before, after)) return {};
    const std::string head = std::string(name_of(part)) + ": ";
    std::string text;
    int told = 0;
    for (const FieldWords& field : fields_of(part)) {
        const std::string was = field.text(before), is = field.text(after);
        if (was == is) continue;
        if (++told > 2) return head + text + ", ...";
        text += std::string(told > 1 ? ", " : "") + std::string(field.name);
        if (field.several)
            text += " changed";
        else
            text.append(" ").append(was).append(" -> ").append(is);
    }
    return head + (text.empty() ? "changed" : text);
}

// Database or substance; what else a new substance brings with it is not told.
std::string substance_changed(const Document& before, const Document& after) {
    if (before.substance.StoffIndexAktiv != after.substance.StoffIndexAktiv ||
        before.substance.constants.StoffName != after.substance.constants.StoffName) {
        if (after.substance.StoffIndexAktiv != 0 || database_name(before) == database_name(after))
            return "Substance: " + substance_name(before) + " -> " + substance_name(after);
    }
    if (before.DatabaseKind != after.DatabaseKind || before.DatabasePath != after.DatabasePath)
        return "Database: " + database_name(before) + " -> " + database_name(after);
    if (before.substance != after.substance)
        return "Substance: constants of " + substance_name(after) + " changed";
    return {};
}

bool same_models(const Document& a, const Document& b) {
    return a.models == b.models && a.eos_input == b.eos_input && a.substance == b.substance;
}
void take_confirmation(const ShellState& from, ShellState& to) {
    to.ModelsConfirmed = from.ModelsConfirmed;
    to.ModelStatus = from.ModelStatus;
    to.ModelChange = from.ModelChange;
}
void take_project(const ShellState& from, ShellState& to) {
    to.ProjectPath = from.ProjectPath;
    to.ProjectFolder = from.ProjectFolder;
    to.ProjectTitle = from.ProjectTitle;
    to.LastSessionLoaded = from.LastSessionLoaded;
}

// The mark "changed" of data that a step kept, after data with `now` were saved to their file.
template <class Data>
void mark_unsaved(const Data& now, Data& kept, bool Data::*changed) {
    if (!file_of(now).empty() && file_of(kept) == file_of(now)) kept.*changed = !(rows(kept) == rows(now));
}

// Why a database does not have the substance of a document; empty when it does.
std::string missing_substance(const Document& document, const DatabaseFile& file) {
    const int index = document.substance.StoffIndexAktiv;
    const SubstanceConstants& substance = document.substance.constants;
    if (document.DatabaseKind == 0 || index == 0) return {};
    if (index <= file.StoffAnzahl() && read_substance_head(file, index).CASRN == substance.StoffCAS)
        return {};
    return "The database " + in_quotes(document.DatabasePath) + " does not have " + substance.StoffName +
           " at its place any more.";
}

// The database of a document, opened anew where another one is open. fault: why that cannot be.
struct DatabaseOf {
    DatabaseFile file;
    bool opened = false;
    std::string fault;
};
DatabaseOf database_of(const Document& document, const Session& session) {
    const DatabaseFile& present = session.database;
    if (present.DatabaseKind == document.DatabaseKind && present.path == document.DatabasePath &&
        document.options.Englisch == session.document.options.Englisch)
        return {present, false, missing_substance(document, present)};
    DatabaseFile file;
    const std::string& path = document.DatabasePath;
    if (document.DatabaseKind != 0) {
        if (!FileExists(path, session.ProgramPath))
            return {{}, false, "There is no database " + in_quotes(path) + " any more."};
        OpenedDatabase opened = open_database(document.DatabaseKind, path, document.options.Englisch);
        if (opened.err != 0) return {{}, false, std::move(opened.fault)};
        file = std::move(opened.file);
    }
    if (file.DatabaseKind != 6) file.PathQ06 = present.PathQ06;
    if (file.DatabaseKind != 7) file.PathQ07 = present.PathQ07;
    std::string fault = missing_substance(document, file);
    return {std::move(file), true, std::move(fault)};
}

template <class Point>
std::size_t bytes_not_seen(const SharedVector<Point>& list, std::set<const void*>& seen) {
    return seen.insert(&list.list()).second ? list.size() * sizeof(Point) : 0;
}

}  // namespace

std::string step_sentence(const Document& before, const Document& after) {
    std::vector<std::string> sentences;
    const auto add = [&](std::string sentence) {
        if (!sentence.empty()) sentences.push_back(std::move(sentence));
    };
    add(substance_changed(before, after));
    const bool same_substance = sentences.empty();
    add(data_changed("Measured data: ", before.exp, after.exp));
    add(data_changed("X-Y data: ", before.xy, after.xy));
    if (same_substance && sentences.empty()) add(texts_changed(before, after));
    if (same_substance) {
        for (const DocumentPart part :
             {DocumentPart::models, DocumentPart::reference, DocumentPart::units, DocumentPart::options})
            add(part_changed(part, before, after));
    }
    std::string text;
    for (std::size_t i = 0; i < sentences.size() && i < 2; ++i) text += (i > 0 ? "; " : "") + sentences[i];
    return sentences.size() > 2 ? text + "; ..." : text;
}

History::Calculation History::calculation_of(const Document& document) {
    return {document.calc, document.exp.points.front(), document.exp.optFitFunction, document.ProjectComment};
}

void History::take_calculation(const Calculation& from, Document& to) {
    to.calc = from.calc;
    to.exp.optFitFunction = from.optFitFunction;
    to.ProjectComment = from.ProjectComment;
    if (to.exp.points.front() != from.direct) to.exp.points.edit().front() = from.direct;
    if (to.calc.CurrentPoint > data_point_count(to.exp)) to.calc.CurrentPoint = first_active_point(to.exp);
}

void History::start(const Session& session) {
    undo_.clear();
    redo_.clear();
    present_ = {session.document, session.shell, session.StoffIndex};
}

bool History::record(const Session& session) {
    State now{session.document, session.shell, session.StoffIndex};
    // A choice that is not confirmed leaves the document, and with it models that were.
    if (!now.shell.ModelsConfirmed && present_.shell.ModelsConfirmed &&
        same_models(now.document, present_.document))
        take_confirmation(present_.shell, now.shell);
    std::string sentence = step_sentence(present_.document, now.document);
    const bool project = now.shell.ProjectPath != present_.shell.ProjectPath;
    if (sentence.empty()) {
        saved(now.document);
        present_ = std::move(now);
        return false;
    }
    if (project && !now.shell.ProjectTitle.empty())
        sentence = "Project: " + now.shell.ProjectTitle + " loaded";
    const Calculation met = calculation_of(now.document);
    const bool calculation = met != calculation_of(present_.document);
    undo_.push_back({std::move(sentence), std::move(present_), met, calculation, project});
    redo_.clear();
    present_ = std::move(now);
    keep_limits();
    return true;
}

// Data that were saved: what the steps hold of the same file is now what the file has, or is not.
void History::saved(const Document& now) {
    const Document& before = present_.document;
    const bool exp = !now.exp.ExpGeaendert && (before.exp.ExpGeaendert || before.exp.file != now.exp.file);
    const bool xy = !now.xy.XYGeaendert && (before.xy.XYGeaendert || before.xy.XYFile != now.xy.XYFile);
    if (!exp && !xy) return;
    for (std::deque<Step>* steps : {&undo_, &redo_}) {
        for (Step& step : *steps) {
            if (exp) mark_unsaved(now.exp, step.other.document.exp, &ExperimentalData::ExpGeaendert);
            if (xy) mark_unsaved(now.xy, step.other.document.xy, &XYData::XYGeaendert);
        }
    }
}

std::size_t History::bytes() const {
    std::set<const void*> seen;
    bytes_not_seen(present_.document.exp.points, seen);
    bytes_not_seen(present_.document.xy.points, seen);
    std::size_t sum = 0;
    for (const std::deque<Step>* steps : {&undo_, &redo_}) {
        for (const Step& step : *steps) {
            sum += bytes_not_seen(step.other.document.exp.points, seen);
            sum += bytes_not_seen(step.other.document.xy.points, seen);
        }
    }
    return sum;
}

void History::keep_limits() {
    while (!undo_.empty() && (undo_.size() > limits_.steps || bytes() > limits_.bytes)) undo_.pop_front();
}

std::string History::undo_sentence(const Session& session) const {
    if (!session.shell.ModelsConfirmed && present_.shell.ModelsConfirmed)
        return "Models, not confirmed" +
               (session.shell.ModelChange.empty() ? std::string() : ": " + session.shell.ModelChange);
    return undo_.empty() ? std::string() : undo_.back().sentence;
}

History::Move History::undo(Session& session) {
    record(session);  // nothing is lost that nobody told of
    if (!session.shell.ModelsConfirmed && present_.shell.ModelsConfirmed) {
        Move back{.done = true, .sentence = undo_sentence(session), .fault = {}, .changes = {}};
        take_confirmation(present_.shell, session.shell);
        back.changes.models = true;
        return back;
    }
    return move(session, undo_, redo_);
}

History::Move History::redo(Session& session) {
    record(session);
    return move(session, redo_, undo_);
}

History::Move History::move(Session& session, std::deque<Step>& from, std::deque<Step>& to) {
    Move result;
    if (from.empty()) return result;
    const Step& step = from.back();
    result.sentence = step.sentence;
    State target = step.other;
    const Calculation calculation = calculation_of(present_.document);
    if (!step.calculation && calculation != step.met) take_calculation(calculation, target.document);
    DatabaseOf database = database_of(target.document, session);
    if (!database.fault.empty()) {
        result.fault = std::move(database.fault);
        return result;
    }
    ShellState shell = session.shell;
    take_confirmation(target.shell, shell);
    if (step.project) take_project(target.shell, shell);
    target.shell = std::move(shell);
    if (database.opened) session.names.reset();
    session.database = std::move(database.file);
    session.StoffIndex = target.StoffIndex;
    result.changes = commit(session, target.document);
    session.shell = target.shell;
    // Where the models need to be confirmed, or are so again, every window has to know.
    result.changes.models = true;
    const Calculation reached = calculation_of(target.document);
    to.push_back(
        {step.sentence, std::exchange(present_, std::move(target)), reached, step.calculation, step.project});
    from.pop_back();
    result.done = true;
    return result;
}

}  // namespace quom
