#include "forms/import_head.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/code_page.h"
#include "forms/table_text.h"
#include "quantities/unit_table.h"

namespace quom {
namespace {

constexpr std::size_t longest_head = 200;  // bytes

struct QuantityRow {
    ImportQuantity quantity;
    std::string_view name;
    std::optional<Quantity> dimension;
};
constexpr std::array<QuantityRow, import_quantity_count> quantity_rows = {
    {{ImportQuantity::skip, "not used", {}},
     {ImportQuantity::T, "T", Quantity::T},
     {ImportQuantity::p, "p", Quantity::p},
     {ImportQuantity::rhoV, "rho(V)", Quantity::rho},
     {ImportQuantity::rhoL, "rho(L)", Quantity::rho},
     {ImportQuantity::hLV, "delta(LV)h", Quantity::hLV},
     {ImportQuantity::cp, "cp", Quantity::cp},
     {ImportQuantity::x, "x", {}},
     {ImportQuantity::y, "y", {}}}};

const QuantityRow& row_of(ImportQuantity q) {
    return *std::ranges::find(quantity_rows, q, &QuantityRow::quantity);
}

enum NameKind { plain, volume, any_density };

// Names as `bare` writes them: small letters without blanks, signs and brackets.
struct HeadName {
    std::string_view names;  // parted by blanks
    ImportQuantity quantity;
    NameKind kind = plain;
};
using enum ImportQuantity;
constexpr HeadName head_names[] = {
    {"t temp temperature temperatur temperatura température tsat tlv tboil boilingtemperature "
     "siedetemperatur tabs",
     T},
    {"p press pressure druck dampfdruck sättigungsdruck vaporpressure vapourpressure psat pvap plv "
     "saturationpressure vaporpressurep pabs absolutepressure absolutdruck pressione pression presión",
     p},
    {"rhov ρv rho'' ρ'' rhog ρg rhovap rhogas dv vapordensity vapourdensity gasdensity densityvapor "
     "densityvapour densitygas saturatedvapordensity saturatedvapourdensity dampfdichte gasdichte "
     "dichtedampf dichtegas dichtev rhosatv",
     rhoV},
    {"rhol ρl rho' ρ' rholiq rhof dl liquiddensity densityliquid saturatedliquiddensity densityl "
     "flüssigkeitsdichte flüssigdichte dichteflüssig dichteflüssigkeit dichtel rhosatl",
     rhoL},
    {"rho ρ density dichte dens densité densità", rhoL, any_density},
    {"vl v' liquidvolume molarvolumeliquid liquidmolarvolume volumeliquid vliq", rhoL, volume},
    {"vv v'' vg vaporvolume vapourvolume gasvolume volumevapor volumevapour vvap", rhoV, volume},
    {"hlv deltalvh δlvh deltahlv δhlv deltahv δhv δvh deltahvap δhvap δvaph hvap hfg δh deltah "
     "enthalpyofvaporization enthalpyofvaporisation heatofvaporization heatofvaporisation "
     "vaporizationenthalpy vaporisationenthalpy latentheat verdampfungsenthalpie verdampfungswärme",
     hLV},
    {"cp heatcapacity specificheat specificheatcapacity isobaricheatcapacity heatcapacitycp "
     "wärmekapazität spezifischewärme spezifischewärmekapazität molarewärmekapazität cpl cpmolar",
     cp},
};
// "x" and "y" are no quantities: they are read by their place, or by these names.
constexpr HeadName pair_names[] = {{"x", x}, {"y", y}};

// Small letters without blanks, signs and brackets.
std::string bare(std::string_view text) {
    std::string small;
    for (const char c : text) {
        if (std::string_view(" _-.,()[]{}:*^$\\\t").find(c) != std::string_view::npos) continue;
        small += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    constexpr std::pair<std::string_view, std::string_view> letters[] = {
        {"Ä", "ä"},  {"Ö", "ö"}, {"Ü", "ü"},   {"Δ", "δ"},   {"∆", "δ"},     {"ϱ", "ρ"},
        {"″", "''"}, {"′", "'"}, {"\"", "''"}, {"’’", "''"}, {"\u00A0", ""}, {"₍", ""}};
    for (const auto& [from, to] : letters) {
        for (std::size_t at = small.find(from); at != std::string::npos;
             at = small.find(from, at + to.size()))
            small.replace(at, from.size(), to);
    }
    return small;
}

using NameMap = HeadNames::Map;

void add_names(NameMap& names, const HeadName& row) {
    for (std::string_view rest = row.names; !rest.empty();) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        HeadCell cell{.quantity = row.quantity};
        cell.volume = row.kind == volume;
        cell.any_density = row.kind == any_density;
        names.emplace(rest.substr(0, end), cell);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

NameMap make_names() {
    NameMap names;
    for (const HeadName& row : head_names) add_names(names, row);
    for (const HeadName& row : pair_names) add_names(names, row);
    for (const QuantityRow& row : quantity_rows) {
        if (row.dimension) names.emplace(bare(row.name), HeadCell{.quantity = row.quantity});
    }
    // The names of the table of quantities; those that no data set holds are known too.
    for (std::size_t i = 0; i < quantity_count; ++i) {
        const QuantityInfo& info = quantity_info(static_cast<Quantity>(i));
        const auto known = names.find(bare(info.symbol));
        HeadCell cell;
        if (known != names.end())
            cell = known->second;
        else
            cell.other = info.name;
        for (const std::string_view name : {info.symbol, info.name, info.table_name}) {
            if (!name.empty()) names.emplace(bare(name), cell);
        }
    }
    return names;
}

// "kg/m^3" of "(kg/m^3)", "[kg/m^3]", "in kg/m^3", "/ kg/m^3".
std::string_view bare_unit(std::string_view text) {
    text = trim_cell(text);
    while (!text.empty() && std::string_view("/,;:_").find(text.front()) != std::string_view::npos)
        text = trim_cell(text.substr(1));
    if (text.starts_with("in ")) text = trim_cell(text.substr(3));
    const bool round = text.starts_with('(') && text.find(')') == text.size() - 1;
    const bool square = text.starts_with('[') && text.find(']') == text.size() - 1;
    return round || square ? trim_cell(text.substr(1, text.size() - 2)) : text;
}

// Any M: it decides only whether a unit can be converted, not how it is called.
constexpr double any_M = 1;

std::string unit_name(std::string_view text, Quantity q) {
    const std::string_view unit = bare_unit(text);
    if (unit.empty() || unit.size() > longest_head) return {};
    const UnitMatch match = find_unit(q, unit, any_M);
    return match.fault.empty() ? std::string(match.name) : std::string();
}

// Places where a name may end and a unit begin.
std::vector<std::size_t> cuts_of(std::string_view text) {
    std::vector<std::size_t> cuts;
    for (std::size_t at = 1; at < std::min(text.size(), longest_head); ++at) {
        if (std::string_view("/[(,;_ ").find(text[at]) != std::string_view::npos) cuts.push_back(at);
    }
    return cuts;
}

}  // namespace

std::string_view import_name(ImportQuantity q) { return row_of(q).name; }
std::optional<Quantity> quantity_of(ImportQuantity q) { return row_of(q).dimension; }

HeadNames::HeadNames() : names_(make_names()) {}

const HeadCell* HeadNames::find(std::string_view name) const {
    if (name.size() > longest_head) return nullptr;
    const auto known = names_.find(bare(name));
    return known == names_.end() ? nullptr : &known->second;
}

HeadCell HeadNames::read(std::string_view text) const {
    text = trim_cell(text);
    while (text.ends_with('/') || text.ends_with('=') || text.ends_with(':') || text.ends_with(','))
        text = trim_cell(text.substr(0, text.size() - 1));
    if (text == "t") return {};  // a time as well as a temperature
    if (const HeadCell* const whole = find(text)) return *whole;
    HeadCell found;
    for (const std::size_t cut : cuts_of(text)) {
        const std::string_view name = trim_cell(text.substr(0, cut));
        const HeadCell* const known = find(name);
        if (!known) continue;
        const std::optional<Quantity> q = quantity_of(known->quantity);
        std::string unit = q ? unit_name(text.substr(cut), *q) : std::string();
        if (!unit.empty()) {
            found = *known;
            found.unit = std::move(unit);
            return found;
        }
        if (name != "t") found = *known;
        if (q) found.wrong_unit = bare_unit(text.substr(cut));
    }
    return found;
}

std::string unit_in_head(std::string_view text, Quantity q) {
    std::string unit = unit_name(text, q);
    for (const std::size_t cut : cuts_of(text)) {
        if (!unit.empty()) break;
        unit = unit_name(text.substr(cut), q);
    }
    return unit;
}

ImportQuantity quantity_of_unit(std::string_view text) {
    for (const ImportQuantity q : {T, p, ImportQuantity::cp}) {
        if (!unit_name(text, *quantity_of(q)).empty()) return q;
    }
    return skip;
}

}  // namespace quom
