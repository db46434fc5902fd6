#include "session/data_diagnosis.h"

#include <cmath>

#include "base/constants.h"
#include "engine/models.h"

namespace quom {

namespace {

struct Paragraph {
    bool DataSituation::*flag;
    const char* there;
    const char* missing;
};

constexpr Paragraph Paragraphs[] = {
    {&DataSituation::HatKritDaten, "- critical data available;\n",
     "- no critical data available\n"
     "  no calculations possible\n"
     "  If possible, use the incremental methods offered.\n"
     "  (=> Data / data from molecule structure groups) \n"},
    {&DataSituation::HatOmega, "- acentric factor omega available\n",
     "- no acentric factor omega available; omega = 0 is set.\n"
     " Thus. some CEOS have limited applicability.\n"
     "  to a limites extent.\n"
     "  If possible, use the incremental methods offered.\n"
     "  (=> Data / data from molecule structure groups) \n"},
    {&DataSituation::HatEVP, "- vapor pressure equations p(T) available\n",
     "- vapor pressure equations p(T) not available\n"},
    {&DataSituation::HatTnb, "- normal boiling temperature available\n",
     "- normal boiling temperature not available\n"
     "  so correlated vapor press. equ. are not calculable\n"
     " If possible, use the increment methods offered.\n"
     " (Estimation of substance data from molecular structure groups)\n"},
    {&DataSituation::HatHLV,
     "- enthalpy of vaporization equ. delta(LV)H = f(T)\n"
     "  available\n",
     "- no enthalpy of vaporization equ. delta(LV)H = f(T)\n"
     "  available\n"
     "  no delta(LV)h diagrams and calculations possible\n"},
};

constexpr const char* Verdicts[] = {
    "WITH THIS DATA SITUATION, THERE ARE NO LIMITATIONS",
    "WITH THIS DATA SITUATION, THERE ARE SOME LIMITATIONS",
    "WITH THIS DATA SITUATION, THERE ARE SEVERE LIMITATIONS",
    "NO CALCULATIONS ARE POSSIBLE WITH THIS DATA SITUATIONH",
};

constexpr AmpelColour Colours[] = {
    {true, 50, 255, 50, "green"},
    {true, 255, 255, 0, "yellow"},
    {true, 255, 200, 0, "orange"},
    {true, 255, 0, 0, "red"},
};

}  // namespace

DataSituation DatenSituation(const SubstanceConstants& c) {
    DataSituation d;
    d.HatKritDaten = c.Tcr >= TinyT && c.pcr >= TinyT;
    d.HatOmega = static_cast<float>(c.omega) != 0.0F;  // compared in single precision
    // The limits are summed with their signs; opposite ones may cancel. 32 bits cannot overflow.
    const int limits = c.AntHiTLo + c.AntLoTLo + c.KFTLo + c.WagnerTLo;
    const double august = static_cast<double>(c.AugustA) * static_cast<double>(c.AugustB);
    d.HatEVP = limits != 0 || std::abs(august) >= TinyT;
    d.HatTnb = static_cast<double>(c.Tnb) >= TinyT;
    d.HatHLV = c.HLVTLo >= 1;

    d.AmpelStufe = 1;
    if (!d.HatKritDaten) d.AmpelStufe = 4;
    if (d.HatKritDaten && !d.HatEVP) d.AmpelStufe = 3;
    if (d.HatKritDaten && !(d.HatOmega && d.HatTnb)) d.AmpelStufe = 2;  // the last word, also over level 3
    return d;
}

AmpelColour ampel_colour(int level) { return level >= 1 && level <= 4 ? Colours[level - 1] : AmpelColour{}; }

Message data_diagnosis_text(const DataSituation& situation, const SubstanceMarks& marks) {
    std::string text;
    for (const Paragraph& p : Paragraphs) text += situation.*p.flag ? p.there : p.missing;
    for (const std::string& sentence : sentences(marks)) text += "- " + sentence + "\n";
    text += "\n";
    text += Verdicts[situation.AmpelStufe - 1];
    if (situation.AmpelStufe > 1)
        text += "\nMissing data could possibly be added in the database editor.\n(Click on icon \"db\"";
    return {.title = "Substance data situation (\"traffic lights\")",
            .text = std::move(text),
            .kind = situation.AmpelStufe > 1 ? MessageKind::warning : MessageKind::info};
}

DataSituation DataDiagnosis(const SubstanceConstants& substance, const SubstanceMarks& marks,
                            Messages& messages) {
    const DataSituation situation = DatenSituation(substance);
    messages.ask(data_diagnosis_text(situation, marks));
    return situation;
}

std::string_view missing_formation_data(const SubstanceConstants& substance, int RefKode) {
    struct Row {
        int RefKode;
        float SubstanceConstants::*value;
        std::string_view name;
    };
    static constexpr Row rows[] = {
        {reference_formation, &SubstanceConstants::dfH0, "enthalpy of formation"},
        {reference_formation, &SubstanceConstants::S0abs, "conventional entropy"},
        {reference_from_gibbs, &SubstanceConstants::dfH0, "enthalpy of formation"},
        {reference_from_gibbs, &SubstanceConstants::dfG0, "Gibbs energy of formation"},
    };
    for (const Row& row : rows)
        if (row.RefKode == RefKode && substance.*row.value == 0.0F) return row.name;
    return {};
}

}  // namespace quom
