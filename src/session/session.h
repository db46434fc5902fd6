// The record: the one substance in use, the selected models, and the scratch values of the engine.
//
// One Session is one user's work: functions take it as first argument, two Sessions on two threads never
// meet. Units throughout: T [K], p [kPa], v [m^3/kmol], rho [kg/m^3], h, u, g, a [kJ/kmol], s, cp, cV
// [kJ/(kmol K)], M [kg/kmol], w [m/s]. A quantity that is not known is 0.
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/constants.h"
#include "base/messages.h"
#include "session/calc_state.h"
#include "session/database_file.h"
#include "session/substance_constants.h"

namespace quom {

// Selected models. Written by the model selection, the project file, and start-up.
struct ModelSelection {
    int EOSKode = -1;         // equation of state 0 to 16, -1 none; also CalcBatch mode 11, put back
    int EVPKode = 0;          // vapor pressure equation 0 (none) to 8
    std::string EVPTag;       // its tag: ALP AHP FRO WAG AUG KFW KFR THO; any other text means none
    int HLVKode = 0;          // delta(LV)h model 0 (none) to 7; also the database editor
    int cpKode = 0;           // cp(idG): 0 none, 1 polynomial, 2 sinh/cosh
    float nWat = 0.38f;       // Watson exponent
    bool VPhaseOnly = false;  // the EOS is the ideal gas or a virial form: V-phase alone
    bool Konzept = true;      // true GLOBAL, false PARTIAL
    bool operator==(const ModelSelection&) const = default;
};

// Constants of p = R T/(v - b) - a/((v + c)(v + d)). Written by InitEOSPar, ClearEOSPar and the input of the
// manual virial equation.
struct EosBlock {
    double EOSa = 0, EOSb = 0, EOSc = 0, EOSd = 0;      // a, b, c, d; manual virial: EOSb = b0 [m^3/kmol]
    double EOSna = 0, EOSnb = 0, EOSnc = 0, EOSnd = 0;  // exponents of T; EOSna is the slope m when AlphaForm
                                                        // is 2; manual virial: EOSnb = b1
    double EOSm = 0;                                    // manual virial: exponent b2 of T
    std::int16_t AlphaForm = 1;                         // 1 a T^na, 2 a (1 + m (1 - sqrt(T/Tcr)))^2
    double JiAc = 0, JiB1 = 0, JiZc = 0, JiP3 = 0, JiP4 = 0, JiP5 = 0, JiOa = 0, JiOb = 0, JiCd = 0;  // JiPar
    double vcrEOS = 0;    // critical volume that the EOS implies [m^3/kmol]
    double rhocrEOS = 0;  // critical density that the EOS implies [kg/m^3]
    bool operator==(const EosBlock&) const = default;
};

// Ideal gas reference point and environment. Written by the reference state dialog, RefConst, ResetSession
// and the project file.
struct ReferenceState {
    int RefKode = 1;                     // 1 free, 2 formation with S0abs, 10 formation with dfH0, dfG0
    float TRef0 = 298.15f;               // reference temperature of the ideal gas [K]
    float pRef0 = 0.0f;                  // reference pressure [kPa], 0 becomes 101.325
    double hOffset = 0, sOffset = 0;     // added to every ideal gas h [kJ/kmol] and s [kJ/(kmol K)]
    double TEnv = 298.15, pEnv = pNorm;  // environment of the exergies [K], [kPa]
    bool operator==(const ReferenceState&) const = default;
};

// Reference point of Benson's method [K], [kPa], [kg/m^3]. Written by frmCalcIn, ReferencePoint and the input
// of the reference point.
struct BensonReference {
    float TRefL = 0, pLVRef = 0, rhoLRef = 0, rhoVRef = 0;
};

// Values of the last evaluation, valid until the next engine call. Written by the engine only.
struct Scratch {
    double aT = 0, bT = 0, cT = 0,
           dT = 0;                  // a(T) .. d(T); with VPhaseOnly bT holds B (EOSParT, VirialB, pTv)
    std::array<double, 3> VRoot{};  // volume roots ascending [m^3/kmol] (CubicV, pLV_EOS, TLV_EOS)
    double Bvirial = 0;             // B(T) of the last V-phase-only evaluation (VolumeTp)
    std::int16_t PhaseRegion = 0;   // region 0 to 4 (VolumeTp)
};

// One residual and ideal gas state of one phase of the environment, for the exergies.
struct EnvironmentPhase {
    double h = 0, u = 0, s = 0, v = 0;
};

// What the environment evaluation depends on, and what it gave. Kept by the engine so that the environment is
// evaluated once per selection and not per state.
struct EnvironmentCache {
    bool valid = false;
    int EOSKode = -1, cpKode = 0;
    bool VPhaseOnly = false;
    EosBlock eos;
    ReferenceState reference;
    double Tcr = 0, pcr = 0, omega = 0;
    std::array<float, 14> substance{};  // the two cp(idG) sets, MolMass, dfH0, dfG0, S0abs
    EnvironmentPhase L, V;
    bool hasL = false, hasV = false;
    std::int16_t err = 0;
};

// Units of outputs. Written by the options and the project file.
struct Units {
    int EnergyMode = 0;  // 0 kJ/kmol, 1 K (per R), 2 per (R T), 3 kJ/kg
    int VolumeMode = 0;  // 0 m^3/kmol, 1 m^3/kg, 2 reduced
    double uFactor = 1;  // from molar energies to displayed ones
    double vFactor = 1;  // from molar volumes to displayed ones
    double TFactor = 1, pFactor = 1;
    double TcrStart = 0, pcrStart = 0, vcrStart = 0;  // start values of diagrams and of reduced units
};

// Options of a session. Written by the options window, the project file and start-up.
struct Options {
    bool Englisch = true;       // language of substance names
    bool DezimalKomma = false;  // the system's number format has a decimal comma
    bool BatchMode = false;     // values from the data points instead of direct input
    bool ResetOnClose = true;   // a unit change deletes the 2D diagram
    bool ParSpeichern = false;
    bool chkPartialKurve = false;
    bool chkSKurveOhneKonnode = false;
    bool chkCurveTpRestricted = true;
    bool KurvenMischen = false;
    int Dens = 500;
    char SepCSV = ';', SepXY = ';';
};

// One point of experimental data; entry 0 of the list is the direct input. 0 means "no value".
struct TpRhoPoint {
    std::int16_t Aus = 0;      // -1 inactive
    double T = 0;              // [K]
    double p = 0;              // [kPa]
    float rhoV = 0, rhoL = 0;  // [kg/m^3]
    float HLV = 0;             // delta(LV)h [kJ/kmol]
    float cp = 0;              // [kJ/(kmol K)]
};

// Experimental data. Written by the data editor, the readers of data files and the direct input (entry 0).
struct ExperimentalData {
    std::vector<TpRhoPoint> points = std::vector<TpRhoPoint>(1);  // [0] direct input, [1..] ExpAnzahl points
    int CurrentPoint = 0;
};

// The database in force and the chosen substance. Written by LoadDatabase and SelectSubstance.
struct DatabaseState {
    DatabaseFile file;        // open handle, kind, path and the tables of the substances
    int StoffIndex = 0;       // row marked in the list (1-based, 0 none)
    int StoffIndexAktiv = 0;  // substance in force
    std::string ProgramPath;  // folder of every file named without a folder
};

// The project in force and how far the session has come. Written by start-up, the main window, the OK of the
// model window and the project file.
struct ShellState {
    std::string ProjectPath;         // project in force, empty: none
    std::string ProjectFolder;       // folder that it came from
    std::string ProjectTitle;        // its name
    std::string ProjectComment;      // "<>" stands for none
    bool LastSessionLoaded = false;  // the project in force is the last session
    bool ModelsConfirmed = false;    // the models of the substance in force were confirmed
    std::string ModelStatus;         // EOS or EVP name with the concept, as they were confirmed
};

struct Session {
    DatabaseState database;
    SubstanceConstants substance;
    ModelSelection models;
    EosBlock eos;
    ReferenceState reference;
    BensonReference benson;
    Scratch scratch;
    EnvironmentCache environment;
    Units units;
    Options options;
    ExperimentalData exp;
    CalcState calc;
    ShellState shell;
    Messages* messages = nullptr;  // where the core speaks to the user; none: the default answer is taken

    // Asks the user, or takes the default answer when nobody listens.
    Answer tell(const Message& message) const {
        return messages ? messages->ask(message) : message.default_button;
    }
};

}  // namespace quom
