// What can be calculated with the data of a substance: the traffic lights and their words.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "session/substance_marks.h"
#include "substance/substance_constants.h"

namespace quom {

// Verdict on the data of the substance: level 1 (no limitations) to 4 (no calculations).
struct DataSituation {
    std::int16_t AmpelStufe = 0;
    bool HatKritDaten = false;  // Tcr and pcr
    bool HatOmega = false;      // acentric factor; a true zero of 1E-37 counts as given
    bool HatEVP = false;        // a vapor pressure equation of the database, or the August line
    bool HatTnb = false;        // normal boiling temperature
    bool HatHLV = false;        // equation of delta(LV)h
    bool RechnungMoeglich() const { return AmpelStufe != 4; }
};

DataSituation DatenSituation(const SubstanceConstants& substance);

// Ground and word of the traffic lights; given false for any number but 1 to 4: no colour.
struct AmpelColour {
    bool given = false;
    int red = 0, green = 0, blue = 0;
    const char* word = "";
};
AmpelColour ampel_colour(int level);

// The verdict in words, one message; below what is there, what of it is an estimate, a fit or extrapolated.
Message data_diagnosis_text(const DataSituation& situation, const SubstanceMarks& marks = {});
// Judges anew and tells the user.
DataSituation DataDiagnosis(const SubstanceConstants& substance, const SubstanceMarks& marks,
                            Messages& messages);

// What a reference state lacks in the record: "enthalpy of formation", "conventional entropy", "Gibbs energy
// of formation"; empty when it has all it needs. A true zero of 1E-37 counts as given.
std::string_view missing_formation_data(const SubstanceConstants& substance, int RefKode);

}  // namespace quom
