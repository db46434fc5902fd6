// Every field of a copied session in its order, for writing and for reading.
#pragma once
#include <limits>

#include "session/recovery.h"

namespace quom {

// An archive has text(name, x), flag(name, x), whole(name, x, least, largest), number(name, x), numbers(name,
// list), code(name, x, from_number), sign(name, x) and points(name, list). Copy is const for writing.
template <class Archive, class Constants>
void constant_fields(Archive& a, Constants& c) {
    constexpr int least = std::numeric_limits<std::int16_t>::min(),
                  largest = std::numeric_limits<std::int16_t>::max();
    const auto limits = [&a](const char* name, auto& low, auto& high) {
        a.whole(name, low, least, largest);
        a.whole(name, high, least, largest);
    };
    a.text("StoffName", c.StoffName);
    a.text("StoffFormula", c.StoffFormula);
    a.text("StoffFormulaCompact", c.StoffFormulaCompact);
    a.text("StoffStructure", c.StoffStructure);
    a.text("StoffCAS", c.StoffCAS);
    a.number("MolMass", c.MolMass);
    a.number("Tcr", c.Tcr);
    a.number("pcr", c.pcr);
    a.number("rhocrDB", c.rhocrDB);
    a.number("vcrDB", c.vcrDB);
    a.number("omega", c.omega);
    a.number("Tnb", c.Tnb);
    a.number("Ttr", c.Ttr);
    a.number("ptr", c.ptr);
    a.number("SecondMeltingT", c.SecondMeltingT);
    a.number("dfH0", c.dfH0);
    a.number("dfG0", c.dfG0);
    a.number("S0abs", c.S0abs);
    a.number("dFs", c.dFs);
    a.numbers("RhoL", c.RhoL);
    a.number("RhoLTcr", c.RhoLTcr);
    limits("RhoL.limits", c.RhoLTLo, c.RhoLTHi);
    a.numbers("RhoS", c.RhoS);
    limits("RhoS.limits", c.RhoSTLo, c.RhoSTHi);
    a.numbers("KFDB", c.KFDB);
    limits("KF.limits", c.KFTLo, c.KFTHi);
    a.numbers("AntLo", c.AntLo);
    limits("AntLo.limits", c.AntLoTLo, c.AntLoTHi);
    a.numbers("AntHi", c.AntHi);
    limits("AntHi.limits", c.AntHiTLo, c.AntHiTHi);
    a.numbers("Wagner", c.Wagner);
    a.number("WagnerTcr", c.WagnerTcr);
    a.number("Wagnerpcr", c.Wagnerpcr);
    limits("Wagner.limits", c.WagnerTLo, c.WagnerTHi);
    a.number("AugustA", c.AugustA);
    a.number("AugustB", c.AugustB);
    a.numbers("KFW", c.KFW);
    a.numbers("KFR", c.KFR);
    a.numbers("THO", c.THO);
    limits("KFW.limits", c.KFWLimits.TLo, c.KFWLimits.THi);
    limits("KFR.limits", c.KFRLimits.TLo, c.KFRLimits.THi);
    limits("THO.limits", c.THOLimits.TLo, c.THOLimits.THi);
    a.numbers("cpPoly", c.cpPoly);
    limits("cpPoly.limits", c.cpPolyTLo, c.cpPolyTHi);
    a.numbers("cpDIPPR", c.cpDIPPR);
    limits("cpDIPPR.limits", c.cpDIPPRTLo, c.cpDIPPRTHi);
    a.numbers("cpL", c.cpL);
    limits("cpL.limits", c.cpLTLo, c.cpLTHi);
    a.numbers("cpS", c.cpS);
    limits("cpS.limits", c.cpSTLo, c.cpSTHi);
    a.flag("havePoly", c.havePoly);
    a.flag("haveSinh", c.haveSinh);
    a.flag("HasCpL", c.HasCpL);
    a.flag("HasCpS", c.HasCpS);
    a.numbers("HLV", c.HLV);
    a.number("HLVTcr", c.HLVTcr);
    limits("HLV.limits", c.HLVTLo, c.HLVTHi);
    a.number("WatsonHLV", c.WatsonHLV);
    a.number("WatsonT", c.WatsonT);
}

template <class Archive, class Document>
void model_fields(Archive& a, Document& d) {
    a.code("EOSKode", d.models.EOSKode, eos_of);
    a.code("EVPKode", d.models.EVPKode, evp_of);
    a.code("HLVKode", d.models.HLVKode, hlv_of);
    a.code("cpKode", d.models.cpKode, cp_form_of);
    a.number("nWat", d.models.nWat);
    a.flag("Konzept", d.models.Konzept);
    for (auto* x : {&d.eos_input.b0, &d.eos_input.b1, &d.eos_input.b2, &d.eos_input.JiP3, &d.eos_input.JiP4,
                    &d.eos_input.JiP5, &d.eos_input.JiZc, &d.eos_input.JiB1})
        a.number("eos_input", *x);
    a.whole("RefKode", d.reference.RefKode, reference_free, reference_from_gibbs);
    a.number("TRef0", d.reference.TRef0);
    a.number("pRef0", d.reference.pRef0);
    a.number("hOffset", d.reference.hOffset);
    a.number("sOffset", d.reference.sOffset);
    a.number("TEnv", d.reference.TEnv);
    a.number("pEnv", d.reference.pEnv);
    a.whole("EnergyMode", d.units.EnergyMode, energy_molar, energy_per_mass);
    a.whole("VolumeMode", d.units.VolumeMode, volume_molar, reduced_volume);
    a.number("TcrStart", d.units.TcrStart);
    a.number("pcrStart", d.units.pcrStart);
    a.number("vcrStart", d.units.vcrStart);
}

template <class Archive, class Options>
void option_fields(Archive& a, Options& o) {
    a.flag("Englisch", o.Englisch);
    a.flag("DezimalKomma", o.DezimalKomma);
    a.flag("BatchMode", o.BatchMode);
    a.flag("ResetOnClose", o.ResetOnClose);
    a.flag("ParSpeichern", o.ParSpeichern);
    a.flag("chkPartialKurve", o.chkPartialKurve);
    a.flag("chkSKurveOhneKonnode", o.chkSKurveOhneKonnode);
    a.flag("chkCurveTpRestricted", o.chkCurveTpRestricted);
    a.flag("KurvenMischen", o.KurvenMischen);
    a.whole("Dens", o.Dens, 0, 1000000);
    a.sign("SepCSV", o.SepCSV);
    a.sign("SepXY", o.SepXY);
}

template <class Archive, class Calculation>
void calculation_fields(Archive& a, Calculation& c) {
    a.code("CalcMode", c.CalcMode, mode_of);
    a.flag("GlobalCalc", c.setup.GlobalCalc);
    a.flag("BensonRhoL", c.setup.BensonRhoL);
    a.flag("RhoLWanted", c.setup.RhoLWanted);
    a.flag("VLEAssumed", c.setup.VLEAssumed);
    a.number("TRefL", c.setup.benson.TRefL);
    a.number("pLVRef", c.setup.benson.pLVRef);
    a.number("rhoLRef", c.setup.benson.rhoLRef);
    a.number("rhoVRef", c.setup.benson.rhoVRef);
    a.number("tank.m", c.tank.m);
    a.number("tank.V", c.tank.V);
    a.number("tank.T", c.tank.T);
    a.whole("CurrentPoint", c.CurrentPoint, 0, std::numeric_limits<int>::max());
    a.whole("ExtLevel", c.ExtLevel, 1, 4);
    a.flag("ShowFunctions", c.ShowFunctions);
    a.whole("ProcessForm", c.ProcessForm, 0, 1000);
    a.number("ProcessT", c.ProcessT);
    a.number("ProcessP", c.ProcessP);
}

template <class Archive, class Document>
void data_fields(Archive& a, Document& d) {
    a.text("ExpFile", d.exp.file.ExpFile);
    a.text("ExpTitle", d.exp.file.ExpTitle);
    a.text("ExpDate", d.exp.file.ExpDate);
    a.text("ExpComment", d.exp.file.ExpComment);
    a.text("ExpCAS", d.exp.file.ExpCAS);
    a.text("ExpName", d.exp.file.ExpName);
    a.flag("ExpGeaendert", d.exp.ExpGeaendert);
    a.whole("optFitFunction", d.exp.optFitFunction, 1, 5);
    a.points("points", d.exp.points);
    a.text("XYFile", d.xy.XYFile);
    a.text("XYComment", d.xy.comment);
    a.flag("XYGeaendert", d.xy.XYGeaendert);
    a.points("xy", d.xy.points);
    a.text("ProjectComment", d.ProjectComment);
}

template <class Archive, class Copy>
void copy_fields(Archive& a, Copy& copy) {
    auto& d = copy.document;
    a.text("written", copy.written);
    a.text("ProjectPath", copy.shell.ProjectPath);
    a.text("ProjectFolder", copy.shell.ProjectFolder);
    a.text("ProjectTitle", copy.shell.ProjectTitle);
    a.flag("LastSessionLoaded", copy.shell.LastSessionLoaded);
    a.flag("ModelsConfirmed", copy.shell.ModelsConfirmed);
    a.text("ModelStatus", copy.shell.ModelStatus);
    a.text("ModelChange", copy.shell.ModelChange);
    a.whole("StoffIndex", copy.StoffIndex, 0, std::numeric_limits<int>::max());
    a.whole("DatabaseKind", d.DatabaseKind, 0, 7);
    a.text("DatabasePath", d.DatabasePath);
    a.whole("StoffIndexAktiv", d.substance.StoffIndexAktiv, 0, std::numeric_limits<int>::max());
    constant_fields(a, d.substance.constants);
    model_fields(a, d);
    option_fields(a, d.options);
    calculation_fields(a, d.calc);
    data_fields(a, d);
}

}  // namespace quom
