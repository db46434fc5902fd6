#include "diagrams/json_reader.h"

namespace quom {
namespace {

constexpr std::size_t DeepestLevel = 32, MostObjects = 100000;

// Levels and objects, before anything is allocated for them.
void check_nesting(std::string_view bytes) {
    std::size_t level = 0, objects = 0;
    bool in_text = false, escaped = false;
    for (const char c : bytes) {
        if (in_text) {
            in_text = escaped || c != '"';
            escaped = !escaped && c == '\\';
        } else if (c == '"') {
            in_text = true;
        } else if (c == '{' || c == '[') {
            if (++level > DeepestLevel) throw JsonFault("is nested too deeply");
            if (++objects > MostObjects) throw JsonFault("has too many objects");
        } else if ((c == '}' || c == ']') && level > 0) {
            --level;
        }
    }
}

}  // namespace

Json parse_json(std::string_view bytes, std::size_t largest, const std::string& what) {
    if (bytes.size() > largest) throw JsonFault("is larger than a " + what + " can be");
    check_nesting(bytes);
    try {
        return Json::parse(bytes);
    } catch (const Json::parse_error& error) {
        const std::size_t at = std::min(error.byte, bytes.size());
        throw JsonFault("line " + std::to_string(std::ranges::count(bytes.substr(0, at), '\n') + 1) +
                        ": this is no JSON");
    } catch (const Json::exception&) {
        throw JsonFault("a number is too large");
    }
}

}  // namespace quom
