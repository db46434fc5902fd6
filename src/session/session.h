// A session: the document and what follows from it. Services (messages, files, clock, progress) are passed
// beside it.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calc/outcome.h"
#include "engine/fluid.h"
#include "session/document.h"
#include "substance/database_file.h"

namespace quom {

// The project in force and how far the session has come.
struct ShellState {
    std::string ProjectPath;         // project in force, empty: none
    std::string ProjectFolder;       // folder that it came from
    std::string ProjectTitle;        // its name
    std::string ExpFolder;           // last folder of experimental data
    bool LastSessionLoaded = false;  // the project in force is the last session
    bool ModelsConfirmed = false;    // the models of the substance in force were confirmed
    std::string ModelStatus;         // EOS or EVP name with the concept, as they were confirmed
    std::string ModelChange;         // what was chosen since, in words; empty once they are confirmed
    std::string XYFolder;            // last folder of X-Y data
};

struct SubstanceNames;

struct Session {
    Document document;
    std::shared_ptr<const Fluid> fluid =
        make_fluid({});     // of the document's substance and models; never null
    DatabaseFile database;  // the open database
    std::shared_ptr<const SubstanceNames>
        names;                // of the database, null until asked for: see substance_names
    std::string ProgramPath;  // folder of every file named without a folder
    int StoffIndex = 0;       // row marked in the list of substances (1-based, 0 none)
    std::vector<std::optional<Outcome>>
        outcomes;  // one per data point, [0] direct input; absent: not calculated
    ShellState shell;

    const SubstanceConstants& substance() const { return document.substance.constants; }
    UnitFactors factors(double T = 0) const;  // of the document's units, see factors_of
};

// Factors of the document's units for its substance at T [K]. Reduced quantities refer to T(cr), p(cr) of the
// substance and to v(cr) of the equation of state in force.
UnitFactors factors_of(const Document& document, const Fluid& fluid, double T = 0);

// What a commit changed; every window that shows such a thing calculates anew or greys.
struct Changes {
    bool substance = false;  // database, substance, or one of its constants
    bool models = false;     // selection, or constants that are typed
    bool reference = false;
    bool units = false;
    bool options = false;
    bool data = false;    // measured points, or what is kept of their file
    bool xy = false;      // X-Y data
    bool inputs = false;  // calculation in hand, direct input
    bool any() const { return substance || models || reference || units || options || data || xy || inputs; }
    bool fluid() const { return substance || models || reference; }
};

// Takes the document over. A new fluid is made where substance, models, typed constants or reference differ;
// all outcomes go with the fluid before. Of the others those go whose state input differs.
Changes commit(Session& session, Document document);

// Calculates a data point (0 direct input) of the document in its mode, keeps the outcome at the point and
// returns it. A point that is not there has no values.
const Outcome& calculate(Session& session, int point);
// The outcome of the point in force; null when it was not calculated.
const Outcome* current_outcome(const Session& session);

}  // namespace quom
