#include "diagrams/diagram_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <utility>

#include "base/files.h"
#include "base/number_text.h"
#include "diagrams/json_reader.h"
#include "diagrams/sheet_fields.h"

namespace quom {
namespace {

using Known = nlohmann::ordered_json;  // what this version writes, in its order

constexpr std::string_view Format = "QUOM-OC2";
constexpr int Version = 1;
constexpr int MostTexts = 100000;
constexpr std::size_t NumbersInLine = 12;

// The number whose shortest text is that of the single.
double short_double(float x) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), x).ptr;
    double value = 0;
    std::from_chars(text.data(), end, value);
    return static_cast<float>(value) == x ? value : static_cast<double>(x);
}

// ---- writing -------------------------------------------------------------------------------------------

class Writer {
 public:
    explicit Writer(Known& node) : node_(node) {}
    void flag(const char* name, bool x) { node_[name] = x; }
    void whole(const char* name, int x, int least, int largest) {
        node_[name] = std::clamp(x, least, largest);
    }
    void number(const char* name, double x) { node_[name] = std::isfinite(x) ? x : 0.0; }
    void number_or_none(const char* name, const std::optional<double>& x) {
        node_[name] = x && std::isfinite(*x) ? Known(*x) : Known();
    }
    void single(const char* name, float x) { node_[name] = std::isfinite(x) ? short_double(x) : 0.0; }
    void single(const char* name, float x, float least, float largest) {
        single(name, std::isfinite(x) ? std::clamp(x, least, largest) : least);
    }
    void text(const char* name, const std::string& x) { node_[name] = x; }
    void color(const char* name, Color x) { node_[name] = color_text(x); }
    void color_or_none(const char* name, const std::optional<Color>& x) {
        node_[name] = x ? Known(color_text(*x)) : Known();
    }
    template <class Choice>
    void choice(const char* name, Choice x, std::span<const std::string_view> words) {
        node_[name] = words[std::min(static_cast<std::size_t>(x), words.size() - 1)];
    }
    void limits(float low, float high) {
        single("min", low);
        single("max", high);
    }
    void points(const SharedVector<SheetPoint>& points) {
        Known::array_t x, y;
        for (const SheetPoint& point : points) {
            if (!std::isfinite(point.X) || !std::isfinite(point.Y)) continue;
            x.emplace_back(short_double(point.X));
            y.emplace_back(short_double(point.Y));
        }
        node_["x"] = std::move(x);
        node_["y"] = std::move(y);
    }
    template <class Value, class Fields>
    void part(const char* name, const Value& x, Fields fields) {
        Known object = Known::object();
        Writer sub(object);
        fields(sub, x);
        node_[name] = std::move(object);
    }

 private:
    Known& node_;
};

template <class Value, class Fields>
Known object_of(const Value& value, Fields fields) {
    Known object = Known::object();
    Writer writer(object);
    fields(writer, value);
    return object;
}

Known known_series(const Series& series) {
    return object_of(series, [](auto& a, auto& x) { series_fields(a, x); });
}

// The sheet without what is not known.
Known known_sheet(const GraphDocument& sheet) {
    Known root = Known::object();
    root["format"] = Format;
    root["version"] = Version;
    Writer writer(root);
    sheet_fields(writer, sheet);
    Known texts = Known::object(), curves = texts, sets = texts, marks = texts;
    for (std::size_t i = 0; i < sheet.texts.size(); ++i)
        texts[std::to_string(i + 1)] = object_of(sheet.texts[i], [](auto& a, auto& x) { text_fields(a, x); });
    for (int slot = 1; slot <= CurveSlots; ++slot)
        if (!sheet.curve(slot).CurveFree)
            curves[std::to_string(slot)] = known_series(sheet.curve(slot).series);
    for (int set = 1; set <= PointSlots; ++set)
        if (!sheet.set(set).PointFree) sets[std::to_string(set)] = known_series(sheet.set(set).series);
    for (int number = FirstMark; number <= LastMark; ++number)
        if (sheet.mark(number).shown())
            marks[std::to_string(number)] =
                object_of(sheet.mark(number), [](auto& a, auto& x) { mark_fields(a, x); });
    root["texts"] = std::move(texts);
    root["curves"] = std::move(curves);
    root["points"] = std::move(sets);
    root["marks"] = std::move(marks);
    return root;
}

template <class Any>
std::string compact(const Any& value) {
    return value.dump(-1, ' ', false, Any::error_handler_t::replace);
}

// Lists of numbers a few to the line, everything else a field to the line; then what is not known.
void emit(std::string& out, const Known& known, const Json* unknown, std::size_t indent) {
    const std::string inset(indent + 1, ' ');
    if (known.is_array()) {
        out += '[';
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (i > 0) out += i % NumbersInLine == 0 ? ",\n" + inset : ", ";
            out += compact(known[i]);
        }
        out += ']';
        return;
    }
    if (!known.is_object()) {
        out += compact(known);
        return;
    }
    const char* separator = "\n";
    out += '{';
    const auto key = [&](const std::string& name) {
        out += separator + inset + compact(Known(name)) + ": ";
        separator = ",\n";
    };
    for (const auto& [name, value] : known.items()) {
        key(name);
        const bool beside = unknown && unknown->is_object() && unknown->contains(name);
        emit(out, value, beside ? &(*unknown)[name] : nullptr, indent + 1);
    }
    if (unknown && unknown->is_object())
        for (const auto& [name, value] : unknown->items()) {
            if (known.contains(name)) continue;
            key(name);
            out += compact(value);
        }
    out += *separator == ',' ? "\n" + std::string(indent, ' ') + "}" : "}";
}

Json parsed_unknown(const std::string& text) {
    return text.empty() ? Json() : Json::parse(text, nullptr, false);
}

// ---- reading -------------------------------------------------------------------------------------------

void check_format(const Json& root) {
    if (!root.is_object() || !root.contains("format") || root["format"] != Format)
        throw JsonFault("is no diagram file: the mark \"format\": \"QUOM-OC2\" is missing");
    if (!root.contains("version") || root["version"] != Version)
        throw JsonFault("is of another version than 1, which is read here");
}

// What of a file this version would not write.
Json unknown_in(const Json& all, const Known& known) {
    Json rest = Json::object();
    if (!all.is_object() || !known.is_object()) return rest;
    for (const auto& [name, value] : all.items()) {
        const auto found = known.find(name);
        if (found == known.end()) {
            rest[name] = value;
        } else if (value.is_object()) {
            Json inner = unknown_in(value, *found);
            if (!inner.empty()) rest[name] = std::move(inner);
        }
    }
    return rest;
}

// Takes the entry of a list out of what is unknown, as text.
std::string take_unknown(Json& unknown, const char* list, int number) {
    const auto entries = unknown.find(list);
    if (entries == unknown.end()) return "";
    const auto entry = entries->find(std::to_string(number));
    if (entry == entries->end()) return "";
    std::string text = compact(*entry);
    entries->erase(entry);
    if (entries->empty()) unknown.erase(entries);
    return text;
}

// Every entry of the numbered lists with the place for what is unknown of it.
template <class Sheet, class Visit>
void each_entry(Sheet& sheet, Visit visit) {
    int text = 0;
    for (auto& entry : sheet.texts) visit("texts", ++text, entry.unknown);
    for (int slot = 1; slot <= CurveSlots; ++slot) visit("curves", slot, sheet.curve(slot).series.unknown);
    for (int set = 1; set <= PointSlots; ++set) visit("points", set, sheet.set(set).series.unknown);
    for (int number = FirstMark; number <= LastMark; ++number)
        visit("marks", number, sheet.mark(number).series.unknown);
}

void read_series(JsonReader& reader, Series& series) {
    series_fields(reader, series);
    series.label.point =
        std::clamp(series.label.point, 1, std::max(1, static_cast<int>(series.points.size())));
}

GraphDocument read_sheet(const Json& root, const GraphDocument& before) {
    GraphDocument sheet;
    sheet.diagram = before.diagram;
    JsonReader reader(root, "");
    sheet_fields(reader, sheet);
    sheet.diagram.initial = sheet.diagram.range;
    reader.numbered("texts", 1, MostTexts, [&](int number, JsonReader& sub) {
        if (number != static_cast<int>(sheet.texts.size()) + 1) sub.fail("", "the text before it is missing");
        text_fields(sub, sheet.texts.emplace_back());
    });
    reader.numbered("curves", 1, CurveSlots, [&](int number, JsonReader& sub) {
        CurveSlot slot;
        read_series(sub, slot.series);
        slot.CurveFree = slot.series.points.empty();
        if (!slot.CurveFree) sheet.curve(number) = std::move(slot);
    });
    reader.numbered("points", 1, PointSlots, [&](int number, JsonReader& sub) {
        PointSlot slot;
        read_series(sub, slot.series);
        slot.PointFree = slot.series.points.empty();
        if (!slot.PointFree) sheet.set(number) = std::move(slot);
    });
    reader.numbered("marks", FirstMark, LastMark, [&](int number, JsonReader& sub) {
        Mark mark;
        mark_fields(sub, mark);
        if (mark.series.points.size() > 2) sub.fail("", "a mark has two points at most");
        if (mark.shown()) sheet.mark(number) = std::move(mark);
    });
    return sheet;
}

}  // namespace

std::string oc2_bytes(const GraphDocument& sheet) {
    Json unknown = parsed_unknown(sheet.unknown);
    each_entry(sheet, [&](const char* list, int number, const std::string& text) {
        if (!text.empty()) unknown[list][std::to_string(number)] = parsed_unknown(text);
    });
    std::string out;
    emit(out, known_sheet(sheet), &unknown, 0);
    return out + "\n";
}

Oc2Read read_oc2(std::string_view bytes, std::string_view name, const GraphDocument& before) {
    try {
        const Json root = parse_json(bytes, LargestDiagramFile, "diagram file");
        check_format(root);
        GraphDocument sheet = read_sheet(root, before);
        Json unknown = unknown_in(root, known_sheet(sheet));
        each_entry(sheet, [&](const char* list, int number, std::string& text) {
            text = take_unknown(unknown, list, number);
        });
        if (!unknown.empty()) sheet.unknown = compact(unknown);
        return {std::move(sheet), ""};
    } catch (const JsonFault& fault) {
        return {std::nullopt, in_quotes(name) + ": " + fault.what() + "."};
    }
}

Oc2Read load_oc2(const std::string& path, const GraphDocument& before) {
    const FileBytes file = read_file(path, LargestDiagramFile);
    if (!file.bytes) return {std::nullopt, file.fault};
    return read_oc2(*file.bytes, name_part(path), before);
}

std::string save_oc2(const std::string& path, const GraphDocument& sheet) {
    return write_file_atomic(path, oc2_bytes(sheet));
}

std::optional<Message> save_question(const GraphDocument& sheet) {
    if (!sheet.Interchanged) return std::nullopt;
    return Message{"WARNING",
                   "Recommendation: Do not save the diagram in the rotated state (x<=>y).\nContinue?",
                   Buttons::yes_no, Answer::no, MessageKind::warning};
}

Message load_notice() {
    return {"one-time note",
            "If you want to edit the oc2 diagram further,\nplease note the following:\n"
            "1) Load the OC2 diagram file only if the\n   diagram type is set appropriately.\n"
            "2) The substance valid for this file and the same models\n"
            "   (including the standardization of the thermodynamic    \n"
            "   functions) must be loaded.",
            Buttons::ok, Answer::ok, MessageKind::info};
}

std::optional<Message> print_question(const GraphDocument& sheet) {
    if (!sheet.colors.black) return std::nullopt;
    return Message{"WARNING",
                   "You have chosen a black chart. \nDo you really want to print it in that design?",
                   Buttons::yes_no, Answer::yes, MessageKind::warning};
}

}  // namespace quom
