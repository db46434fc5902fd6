// A session: the document and what follows from it. Services (messages, files, clock, progress) are passed
// beside it.
#pragma once
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calc/batch_result.h"
#include "calc/outcome.h"
#include "engine/fluid.h"
#include "session/calculation_record.h"
#include "session/diagram_session.h"
#include "session/document.h"
#include "substance/database_file.h"

namespace quom {

// The project in force and how far the session has come.
struct ShellState {
    std::string ProjectPath;                                // project in force, empty: none
    std::string ProjectFolder;                              // folder that it came from
    std::string ProjectTitle;                               // its name
    std::string ExpFolder;                                  // last folder of experimental data
    bool LastSessionLoaded = false;                         // the project in force is the last session
    std::array<bool, 3> HinweisFlags = {true, true, true};  // one-time notes not yet shown; [2] before saving
    bool ModelsConfirmed = false;  // the models of the substance in force were confirmed
    std::string ModelStatus;       // EOS or EVP name with the concept, as they were confirmed
    std::string ModelChange;       // what was chosen since, in words; empty once they are confirmed
    std::string XYFolder;          // last folder of X-Y data
};

struct PointOutcome {
    int point = 0;  // data point, 0 direct input
    Outcome outcome;
};

struct SubstanceNames;

struct Session {
    Document document;
    std::shared_ptr<const Fluid> fluid =
        make_fluid({});     // of the document's substance and models; never null
    DatabaseFile database;  // the open database
    std::shared_ptr<const SubstanceNames>
        names;                            // of the database, null until asked for: see substance_names
    std::string ProgramPath;              // folder of every file named without a folder
    int StoffIndex = 0;                   // row marked in the list of substances (1-based, 0 none)
    std::optional<PointOutcome> outcome;  // of the point that was calculated last; absent: of none
    std::vector<BatchResult> batch;  // of the data points, [0] direct input; may be shorter than the points
    CalculationRecord record;
    DiagramSession diagram{};
    ShellState shell;

    const SubstanceConstants& substance() const { return document.substance.constants; }
    // Factors of the document's units at T [K], see engine/unit_factors.h.
    UnitFactors factors(double T = 0) const;
};

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
// all results go with the fluid before. Of the others those go whose state input differs, and the list
// results of points that were made inactive. What becomes of the diagram: see keep_diagram.
Changes commit(Session& session, Document document);

// Calculates a data point (0 direct input) of the document in its mode, keeps the outcome until the next
// calculation and its list result at the point. A point that is not there has no values.
const Outcome& calculate(Session& session, int point);
// Nothing that was calculated is shown again.
void forget_results(Session& session);
// The outcome of the point in force; null when another one was calculated last, or none.
const Outcome* current_outcome(const Session& session);

}  // namespace quom
