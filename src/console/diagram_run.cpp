#include "console/diagram_run.h"

#include <algorithm>
#include <iterator>

#include "base/files.h"
#include "base/number_text.h"
#include "calc/reference_point.h"
#include "diagrams/graph_view.h"
#include "forms/diagram_form.h"
#include "session/data_files.h"

namespace quom {
namespace {

using I = Insertion;

constexpr InsertionWord words[] = {
    {I::coexistence, "coexistence", "the coexistence curve", true},
    {I::inversion, "inversion", "the inversion curve", true},
    {I::loop, "s-curve", "the metastable and unstable loop", true},
    {I::tie_line, "tie-line", "the tie line", true},
    {I::bisector, "bisector", "the line of the mean density", true},
    {I::T, "T", "the marks of T", false},
    {I::p, "p", "the marks of p", false},
    {I::v, "v", "the mark of v(cr)", false},
    {I::b, "b", "the mark v = b", false},
    {I::crit_measured, "crit", "the measured critical point", false},
    {I::crit_calculated, "crit-calc", "the calculated critical point", false},
};

Fault wrong(std::string message) { return {status_usage, std::move(message)}; }
Fault no_result(std::string message) { return {status_no_result, std::move(message)}; }

// Keeps what is told without a choice, and passes on what is asked.
class Told : public Messages {
 public:
    explicit Told(Messages& user) : user_(user) {}
    Answer ask(const Message& message) override {
        if (message.buttons != Buttons::ok) return user_.ask(message);
        notes.push_back(note_of(message));
        return Answer::ok;
    }
    std::vector<std::string> notes;

 private:
    Messages& user_;
};

void tell(Messages& messages, std::string note) {
    messages.ask({.title = "Note", .text = std::move(note), .kind = MessageKind::warning});
}

// As a sentence, with its reason where one was told.
std::string with_reason(std::string what, const std::vector<std::string>& notes) {
    std::string text = std::move(what) + (notes.empty() ? std::string() : ": " + notes.back());
    return text.ends_with('.') || text.ends_with('!') ? text : text + ".";
}

const InsertionWord& word_of(Insertion what) { return *std::ranges::find(words, what, &InsertionWord::what); }

// The parameter of a section in the state of the diagram.
double& parameter_of(DiagramState& state, Section section) {
    return section == Section::isothermal ? state.T : section == Section::isobaric ? state.p : state.v;
}

std::string typed(const CurveValue& value) {
    return value.symbol + " = " + genNum(value.value.number) +
           (value.value.unit.empty() ? "" : " " + value.value.unit);
}

// What is drawn one after the other; curves that are not added are counted and told.
class Drawing {
 public:
    Drawing(Session& session, const DiagramRequest& request, Messages& messages)
        : session_(session), request_(request), messages_(messages) {}

    Refused set_up() {
        Document document = session_.document;
        document.options.Dens = request_.options.Dens;
        document.options.chkCurveTpRestricted = request_.options.chkCurveTpRestricted;
        document.calc.setup.benson = ReferencePoint(*session_.fluid).reference();
        commit(session_, std::move(document));
        session_.diagram.TellIsochores = false;
        Told told(messages_);
        if (choose_diagram(session_, request_.kind, told).open) return {};
        return no_result(told.notes.empty() ? "For this substance the critical temperature is missing."
                                            : told.notes.back());
    }

    Refused take_ranges() {
        CurveRange range = sheet().diagram.range;
        const Fluid& fluid = *session_.fluid;
        const CurveColumns columns =
            curve_columns(request_.kind, {}, fluid, session_.diagram.units, {}, session_.diagram.state.T);
        if (Refused refused = take_axis(request_.x, "--x", columns[0], fluid.M, range.XMin, range.XMax))
            return refused;
        if (Refused refused = take_axis(request_.y, "--y", columns[1], fluid.M, range.YMin, range.YMax))
            return refused;
        if (set_coordinates(sheet(), range, LimitsIn::coordinates))
            return no_result("The substance gives no range of the axes; name it by --x and --y.");
        sheet().diagram.initial = range;
        set_log_x(sheet(), request_.log_x);  // the points of curves are laid for it
        set_log_y(sheet(), request_.log_y);
        return {};
    }

    Refused draw_curves() {
        const SectionOption* const section = option_of(sheet().diagram.section);
        if (!section) return draw_one("The curve");
        for (const CurveValue& value : request_.curves.values) {
            const OwnValue own = own_value(value.value, section->quantity, session_.fluid->M);
            if (!own.fault.empty()) return no_result("--curves: " + own.fault + ".");
            parameter_of(session_.diagram.state, section->section) = own.value;
            if (Refused refused = draw_one("The curve " + typed(value))) return refused;
        }
        return {};
    }

    // An overlay that the kind has not is refused; a mark is told and left out.
    Refused insert_all() {
        const auto not_shown = [&](const InsertionWord& word) {
            return kind_words(request_.kind) + " does not show " + std::string(word.name) + ".";
        };
        for (const Insertion what : request_.insertions)
            if (word_of(what).overlay && !can_insert(session_, what)) return wrong(not_shown(word_of(what)));
        for (const Insertion what : request_.insertions) {
            if (can_insert(session_, what))
                add(what, std::string(word_of(what).name));
            else
                unsaid_.push_back(not_shown(word_of(what)));
        }
        return {};
    }

    Refused insert_points() {
        if (request_.points.empty()) return {};
        const std::string path = absolute_path(request_.points);
        if (!LoadExpDataFile(session_, path, false, messages_))
            return Fault{status_file, "The points of " + in_quotes(request_.points) + " were not loaded."};
        add(I::measured_points, "the measured points");
        return {};
    }

    void design() {
        if (request_.black) sheet().colors = full_black();
        if (request_.title) sheet().header.text = *request_.title;
        if (request_.legend && show_legend(sheet())) tell(messages_, "The legend has no text.");
        if (request_.interchange) cmdChangeXY(sheet());
    }

    // The reason why the sheet is empty, else nothing.
    Refused check_empty() const {
        if (!is_empty(sheet())) return {};
        return no_result(unsaid_.empty() ? "Nothing was drawn." : unsaid_.front());
    }

 private:
    GraphDocument& sheet() { return *session_.diagram.sheet; }
    const GraphDocument& sheet() const { return *session_.diagram.sheet; }

    Refused draw_one(const std::string& what) {
        Told told(messages_);
        const bool drawn = draw_curve(session_, told) > 0;
        report(what, drawn, told.notes);
        return {};
    }

    // An overlay, a mark, a set of points; nothing new on the sheet: it was not drawn.
    void add(Insertion what, const std::string& name) {
        Told told(messages_);
        const GraphDocument before = sheet();
        insert(session_, what, false, told);
        std::string begin = name;
        begin.front() = 'T';
        report(begin,
               !(before.curves == sheet().curves && before.sets == sheet().sets &&
                 before.marks == sheet().marks),
               told.notes);
    }

    void report(const std::string& what, bool drawn, const std::vector<std::string>& notes) {
        if (!drawn) {
            const bool several = what.ends_with("points") || what.starts_with("The marks");
            unsaid_.push_back(with_reason(what + (several ? " were" : " was") + " not drawn", notes));
            return;
        }
        for (const std::string& note : notes) tell(messages_, std::string(what).append(": ").append(note));
    }

 public:
    // What is missing on a sheet with something else on it.
    void tell_missing() const {
        for (const std::string& note : unsaid_) tell(messages_, note);
    }

 private:
    Session& session_;
    const DiagramRequest& request_;
    Messages& messages_;
    std::vector<std::string> unsaid_;
};

}  // namespace

std::span<const InsertionWord> insertion_words() { return words; }

Refused check_request(const DiagramRequest& request) {
    const SectionOption* const section = option_of(kind_info(request.kind).section);
    const std::vector<CurveValue>& values = request.curves.values;
    if (!request.curves.fault.empty()) return wrong("--curves: " + request.curves.fault);
    if (!section) {
        if (values.empty()) return {};
        return wrong(kind_words(request.kind) + " is no section: one curve is drawn; leave out --curves.");
    }
    const std::string symbol(section->option.substr(2));
    for (const CurveValue& value : values)
        if (value.symbol != symbol)
            return wrong(kind_words(request.kind) + " is " + std::string(section->name) + "; --curves \"" +
                         symbol + "=...\" is right, not " + value.symbol + ".");
    constexpr double any_molar_mass = 1.0;
    for (const CurveValue& value : values) {
        const OwnValue own = own_value(value.value, section->quantity, any_molar_mass);
        if (!own.fault.empty()) return wrong("--curves: " + own.fault + ".");
    }
    if (values.empty() && request.insertions.empty() && request.points.empty())
        return wrong(kind_words(request.kind) + " is " + std::string(section->name) +
                     "; name its curves by --curves \"" + symbol + "=...\".");
    return {};
}

Refused draw_sheet(Session& session, const DiagramRequest& request, Messages& messages) {
    Drawing drawing(session, request, messages);
    if (Refused refused = drawing.set_up()) return refused;
    if (Refused refused = drawing.take_ranges()) return refused;
    if (Refused refused = drawing.draw_curves()) return refused;
    if (Refused refused = drawing.insert_all()) return refused;
    if (Refused refused = drawing.insert_points()) return refused;
    if (Refused refused = drawing.check_empty()) return refused;
    drawing.tell_missing();
    drawing.design();
    return {};
}

}  // namespace quom
