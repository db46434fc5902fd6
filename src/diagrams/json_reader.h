// Fields of a JSON file, read one by one: what is of another type or outside its limits is a fault that
// names the field.
#pragma once
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "diagrams/graph_document.h"

namespace quom {

using Json = nlohmann::json;

// Ends the reading of a file; caught at the border of its reader.
struct JsonFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The value of a file of so many bytes at most; nesting and number of objects are checked before anything is
// allocated for them. Throws JsonFault with the line.
Json parse_json(std::string_view bytes, std::size_t largest, const std::string& what);

// The fields of one object. A field that is missing leaves its value as it is.
class JsonReader {
 public:
    JsonReader(const Json& node, std::string path) : node_(node), path_(std::move(path)) {
        if (!node.is_object()) fail("", "must be an object");
    }
    // These fields and no others; both are faults otherwise.
    void exactly(std::initializer_list<std::string_view> names) const {
        for (const std::string_view name : names)
            if (!node_.contains(name)) fail(name, "is missing");
        for (const auto& [name, value] : node_.items())
            if (std::ranges::find(names, name) == names.end())
                fail(name.substr(0, 40), "is no field of this object");
    }
    void flag(const char* name, bool& x) {
        if (const Json* value = find(name)) {
            if (!value->is_boolean()) fail(name, "must be true or false");
            x = value->get<bool>();
        }
    }
    void whole(const char* name, int& x, int least, int largest) {
        const Json* value = find(name);
        if (!value) return;
        const double number = value->is_number() ? value->get<double>() : std::nan("");
        if (!(number >= least && number <= largest) || number != std::floor(number))
            fail(name,
                 "must be a whole number from " + std::to_string(least) + " to " + std::to_string(largest));
        x = static_cast<int>(number);
    }
    void number(const char* name, double& x) {
        if (const Json* value = find(name)) x = finite(name, *value);
    }
    void number_or_none(const char* name, std::optional<double>& x) {
        if (const Json* value = find(name))
            x = value->is_null() ? std::nullopt : std::optional(finite(name, *value));
    }
    void single(const char* name, float& x) {
        if (const Json* value = find(name)) x = finite_single(name, *value);
    }
    void single(const char* name, float& x, float least, float largest) {
        single(name, x);
        if (x < least || x > largest)
            fail(name, "must be a number from " + genNum(least) + " to " + genNum(largest));
    }
    void text(const char* name, std::string& x) {
        if (const Json* value = find(name)) {
            if (!value->is_string()) fail(name, "must be a text");
            x = value->get<std::string>();
        }
    }
    void color(const char* name, Color& x) {
        if (const Json* value = find(name)) x = color_in(name, *value);
    }
    void color_or_none(const char* name, std::optional<Color>& x) {
        if (const Json* value = find(name))
            x = value->is_null() ? std::nullopt : std::optional(color_in(name, *value));
    }
    template <class Choice>
    void choice(const char* name, Choice& x, std::span<const std::string_view> words) {
        const Json* value = find(name);
        if (!value) return;
        const auto word =
            value->is_string() ? std::ranges::find(words, value->get_ref<const std::string&>()) : words.end();
        if (word == words.end()) fail(name, "must be one of " + list_of(words));
        x = static_cast<Choice>(word - words.begin());
    }
    void limits(float& low, float& high) {
        single("min", low);
        single("max", high);
        if (!(low < high)) fail("", "min must be below max");
    }
    void points(SharedVector<SheetPoint>& points) {
        const Json *x = list("x"), *y = list("y");
        const std::size_t count = x ? x->size() : 0;
        if (count != (y ? y->size() : 0)) fail("", "x and y must have as many numbers as each other");
        std::vector<SheetPoint> read;
        read.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            read.push_back({finite_single("x", (*x)[i]), finite_single("y", (*y)[i])});
        points = std::move(read);
    }
    // Numbers of a list; null stands for NaN, where it may.
    void numbers(const char* name, std::vector<double>& x, bool with_gaps) {
        const Json* value = list(name);
        x.clear();
        if (!value) return;
        x.reserve(value->size());
        for (const Json& entry : *value)
            x.push_back(with_gaps && entry.is_null() ? std::nan("") : finite(name, entry));
    }
    // The objects of a list in their order. take(sub).
    template <class Take>
    void objects(const char* name, Take take) {
        const Json* value = find(name);
        if (!value) return;
        if (!value->is_array()) fail(name, "must be a list of objects");
        for (std::size_t i = 0; i < value->size(); ++i) {
            JsonReader sub((*value)[i], path_of(name) + "[" + std::to_string(i + 1) + "]");
            take(sub);
        }
    }
    template <class Value, class Fields>
    void part(const char* name, Value& x, Fields fields) {
        const Json* value = find(name);
        if (!value) return;
        JsonReader sub(*value, path_of(name));
        fields(sub, x);
    }
    // The objects of a list by their numbers, from first to last.
    template <class Take>
    void numbered(const char* name, int first, int last, Take take) {
        const Json* value = find(name);
        if (!value) return;
        if (!value->is_object()) fail(name, "must be an object");
        std::size_t taken = 0;
        for (int number = first; number <= last && taken < value->size(); ++number) {
            const auto found = value->find(std::to_string(number));
            if (found == value->end()) continue;
            ++taken;
            JsonReader sub(*found, path_of(name) + "." + std::to_string(number));
            take(number, sub);
        }
        if (taken < value->size())
            fail(name,
                 "has an entry that is none of " + std::to_string(first) + " to " + std::to_string(last));
    }
    [[noreturn]] void fail(std::string_view name, const std::string& what) const {
        const std::string path = name.empty() ? path_ : path_of(name);
        throw JsonFault(path.empty() ? what : path + ": " + what);
    }

 private:
    std::string path_of(std::string_view name) const {
        return path_.empty() ? std::string(name) : path_ + "." + std::string(name);
    }
    const Json* find(const char* name) const {
        const auto found = node_.find(name);
        return found == node_.end() ? nullptr : &*found;
    }
    const Json* list(const char* name) const {
        const Json* value = find(name);
        if (value && !value->is_array()) fail(name, "must be a list of numbers");
        return value;
    }
    double finite(const char* name, const Json& value) const {
        const double x = value.is_number() ? value.get<double>() : std::nan("");
        if (!std::isfinite(x)) fail(name, "must be a number");
        return x;
    }
    float finite_single(const char* name, const Json& value) const {
        const auto x = static_cast<float>(finite(name, value));
        if (!std::isfinite(x)) fail(name, "is too large a number");
        return x;
    }
    Color color_in(const char* name, const Json& value) const {
        const auto color = value.is_string() ? color_of(value.get_ref<const std::string&>()) : std::nullopt;
        if (!color) fail(name, "must be a colour, \"#RRGGBB\"");
        return *color;
    }
    static std::string list_of(std::span<const std::string_view> words) {
        std::string text;
        for (const std::string_view word : words)
            text += (text.empty() ? "\"" : ", \"") + std::string(word) + "\"";
        return text;
    }
    const Json& node_;
    std::string path_;
};

}  // namespace quom
