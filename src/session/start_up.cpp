#include "session/start_up.h"

#include "engine/vapor_pressure.h"
#include "substance/database.h"

namespace quom {

void ResetSession(Session& s) {
    s.calc.CalcMode = 0;
    s.database.StoffIndexAktiv = 0;
    s.models.HLVKode = 0;
    s.models.Konzept = true;
    s.shell.ModelsConfirmed = false;
    const ReferenceState defaults;
    s.reference.TRef0 = defaults.TRef0;
    s.reference.pRef0 = defaults.pRef0;
    s.reference.TEnv = defaults.TEnv;
    s.reference.pEnv = defaults.pEnv;
    drop_derived_state(s);
}

std::int16_t confirm_substance(Session& s, int index) {
    if (index == 0) return 0;
    ResetSession(s);
    const bool has_data = s.exp.points.size() > 1;
    if (has_data && s.tell({.title = "exper. data",
                            .text = "New substance was chosen.\nDelete loaded exper. data now?",
                            .buttons = Buttons::yes_no,
                            .default_button = Answer::yes,
                            .kind = MessageKind::question}) == Answer::yes)
        s.exp = {};

    const std::int16_t err = SelectSubstance(s, index);
    const SubstanceConstants& c = s.substance;
    if (c.Tcr * c.pcr > 0.1 && s.models.EVPKode >= evp_kfw && c.Tnb > static_cast<float>(TinyT))
        KorreliereEVP(s, s.models.EVPKode, static_cast<float>(c.Tcr), static_cast<float>(c.pcr), c.Tnb);
    s.units.TcrStart = c.Tcr;
    s.units.pcrStart = c.pcr;
    s.units.vcrStart = s.eos.vcrEOS;
    return err;
}

}  // namespace quom
