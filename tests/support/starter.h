// Sessions over the starter database, for tests and benchmarks.
#pragma once
#include <stdexcept>
#include <string>
#include <string_view>

#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "session/session.h"
#include "substance/database.h"

namespace quom::test {

// A session with the starter database open and no substance chosen.
inline Session starter_session() {
    Session s;
    s.database.ProgramPath = QUOM_STARTER_DATA;
    if (LoadDatabase(s, 7, std::string(QUOM_STARTER_DATA) + "/quom.q07").err != 0) {
        throw std::runtime_error("the starter database is missing");
    }
    return s;
}

// Selects the EOS code for the substance in force as the model window would, with the parameters of the code.
inline void select_eos(Session& s, int code) {
    s.models.EOSKode = code;
    s.models.VPhaseOnly = !is_cubic(code);
    s.models.Konzept = !s.models.VPhaseOnly;
    if (code != eos_virial_manual) {
        ClearEOSPar(s);
        InitEOSPar(s, code);
    }
}

// Selects a substance by its CAS number and an EOS; the other models as the model window proposes them.
inline void select_substance(Session& s, std::string_view cas, int code) {
    const int index = FindCAS(s, std::string(cas));
    if (index == 0) throw std::runtime_error("not in the starter database: " + std::string(cas));
    SelectSubstance(s, index);
    s.models.EOSKode = code;
    select_models(s);
    select_eos(s, code);
}

inline Session substance_session(std::string_view cas, int code) {
    Session s = starter_session();
    select_substance(s, cas, code);
    return s;
}

inline constexpr std::string_view propane = "74-98-6", water = "7732-18-5", methane = "74-82-8",
                                  decane = "124-18-5", ammonia = "7664-41-7", carbon_dioxide = "124-38-9",
                                  helium = "7440-59-7", hydrogen = "1333-74-0", benzene = "71-43-2",
                                  nitrogen = "7727-37-9", ethanol = "64-17-5", argon = "7440-37-1";

}  // namespace quom::test
