// The starter database: readable tables in, the bytes of quom.q07 and of the synonym file out.
//
// Rules of the table of substances: an empty field is "no value", a written 0 is a true zero. Temperatures
// [K], p [kPa], rho [kg/m^3], M [kg/kmol], molar energies [kJ/kmol], entropies and heat capacities [kJ/(kmol
// K)].
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quom {

struct StarterTables {
    std::string_view substances;  // header cas,formula,name_en,name_de,structure,M,Tcr,..; UTF-8
    std::string_view synonyms;    // header cas,..,synonyms (separated by "|"); rows of any order; UTF-8
    std::string date;             // for the header record, 16 characters at most
};

struct StarterDatabase {
    std::string database;             // bytes of quom.q07
    std::string synonyms;             // bytes of SYNOM7.TXT
    std::vector<std::string> faults;  // one sentence each, with the line of the table; not empty: no bytes
};
// Builds both files. Every row is checked: CAS number with its check digit and unlike all others, lengths and
// characters of the texts, numbers, a formula that agrees with M within 0.05 kg/kmol, limits that are whole
// kelvin of 16 bits with TLo < THi beside the coefficients they belong to, a melting point below the boiling
// point that fits the liquid density, names that lead to one substance only.
StarterDatabase build_starter_database(const StarterTables& tables);

}  // namespace quom
