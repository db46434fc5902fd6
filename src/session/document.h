// The document: all that a project keeps. Dialogs edit a copy and commit it; undo, recovery, "modified" and
// the project file are this one value compared.
#pragma once
#include <string>

#include "calc/state_input.h"
#include "engine/models.h"
#include "fitting/exp_data.h"
#include "fitting/xy_data.h"
#include "quantities/units.h"
#include "substance/substance_constants.h"

namespace quom {

// Contents of the tank as typed.
struct TankInput {
    float m = 0;  // mass [kg]
    float V = 0;  // volume [m^3]
    float T = 0;  // [K]
    bool operator==(const TankInput&) const = default;
};

// Options of the options window.
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
    bool operator==(const Options&) const = default;
};

// The calculation in hand.
struct CalculationInput {
    Mode CalcMode = Mode::none;
    CalcSetup setup;
    TankInput tank;
    int CurrentPoint = 0;               // data point in force, 0 = direct input
    int ExtLevel = 1;                   // 1 no extended output; 2 first box, 3 second box, 4 both
    bool ShowFunctions = false;         // the table of functions in the list
    int ProcessForm = 0;                // selection of the process line form
    double ProcessT = 0, ProcessP = 0;  // start of the process of mode 12 [K], [kPa]
    bool operator==(const CalculationInput&) const = default;
};

// The substance in force: which one, and its constants as unpacked or edited.
struct ChosenSubstance {
    int StoffIndexAktiv = 0;  // index in the database (1-based), 0 none
    SubstanceConstants constants;
    bool operator==(const ChosenSubstance&) const = default;
};

struct Document {
    int DatabaseKind = 0;      // 6 or 7, 0 none
    std::string DatabasePath;  // path in force
    ChosenSubstance substance;
    ModelSelection models;
    EosInput eos_input;
    ReferenceState reference;
    Units units;
    Options options;
    ExperimentalData exp;
    XYData xy;
    CalculationInput calc;
    std::string ProjectComment;  // "<>" stands for none
    bool operator==(const Document&) const = default;
};

// The calculation of a data point; in modes of a tank or a process no value of the point is read.
StateInput state_input(const CalculationInput& calc, const TpRhoPoint& point);
// ... as the document has it. A point that is not there has no values.
StateInput state_input(const Document& document, int point);

}  // namespace quom
