// Undo and redo over the document, with a sentence for each step.
//
// A step is what one action of the user changed in database, substance, models, reference state, units,
// options, measured points or X-Y data. The calculation in hand (its mode, what was typed for it, the point
// in force) makes no step: a result can be typed anew at once, and a step for each temperature would bury the
// ones that cannot. It stays as it is over a step that has not touched it, and comes back with one that has.
#pragma once
#include <cstddef>
#include <deque>
#include <string>

#include "session/session.h"

namespace quom {

// "Models: equation of state Peng / Robinson -> Soave"; empty when no step lies between them.
std::string step_sentence(const Document& before, const Document& after);

class History {
 public:
    struct Limits {
        std::size_t steps = 100;
        std::size_t bytes = std::size_t{256} << 20;  // of lists that the steps hold; shared ones count once
    };
    explicit History(Limits limits) : limits_(limits) {}
    History() : History(Limits{}) {}

    // Begins anew with the session as it is: no steps.
    void start(const Session& session);
    // Takes notice of what changed since the last call; to be called after each action. True: it was a step,
    // and what had been undone cannot be done again.
    bool record(const Session& session);

    // What the next undo or redo concerns; empty: there is none. Models that were chosen and not confirmed
    // count as the last step, which redo does not bring back.
    std::string undo_sentence(const Session& session) const;
    std::string redo_sentence() const { return redo_.empty() ? std::string() : redo_.back().sentence; }

    struct Move {
        bool done = false;
        std::string sentence;  // of the step
        std::string fault;     // why it was refused: the session is as it was
        Changes changes;
    };
    // One step back or forth: document, fluid, database and the confirmation of the models. Refused when the
    // database of that document cannot be opened any more or holds another substance at its place.
    Move undo(Session& session);
    Move redo(Session& session);

    std::size_t steps() const { return undo_.size(); }
    std::size_t bytes() const;  // of lists that the steps hold

 private:
    // What is kept of a session.
    struct State {
        Document document;
        ShellState shell;
        int StoffIndex = 0;
    };
    // The calculation in hand, and what else of a document makes no step.
    struct Calculation {
        CalculationInput calc;
        TpRhoPoint direct;
        int optFitFunction = 1;
        std::string ProjectComment;
        bool operator==(const Calculation&) const = default;
    };
    struct Step {
        std::string sentence;
        State other;               // the session on its far side
        Calculation met;           // of the near side as it was reached
        bool calculation = false;  // it changed the calculation in hand
        bool project = false;      // it changed the project in force
    };
    static Calculation calculation_of(const Document& document);
    static void take_calculation(const Calculation& from, Document& to);
    Move move(Session& session, std::deque<Step>& from, std::deque<Step>& to);
    void saved(const Document& now);
    void keep_limits();

    Limits limits_;
    State present_;
    std::deque<Step> undo_, redo_;  // the next one last
};

}  // namespace quom
