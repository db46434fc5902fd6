// The Iso Calculator over the inverse search, in displayed units: frmIsoCalc without its window.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "engine/iso_search.h"
#include "forms/refusal.h"
#include "quantities/quantity_table.h"
#include "session/session.h"

namespace quom {

// Captions of the functions by IsoFunction.
struct IsoCaption {
    std::string_view caption;
    std::string_view label;
};
inline constexpr std::array<IsoCaption, iso_function_count> iso_captions = {{
    {"Volume V", "V  = "},
    {"Enthalpy H", "H  = "},
    {"Entropy S", "S  = "},
    {"Gibbs Function G", "G  = "},
    {"Internal Energy U", "U  = "},
    {"Helmholtz Fu. A", "A  = "},
    {"Exergy E(H)", "E(H)= "},
    {"Exergy E(U)", "E(U)= "},
}};

// From molar to displayed values of a function (IsoFunction) at T [K].
double iso_factor(const Session& session, int Column, double T);
// IsoSearch with the target in displayed units; T of a factor per (R T) is that of the state found.
IsoResult iso_search(const Session& session, const IsoInput& input);

struct IsoCalculator {
    int IsoIn = iso_find_p;  // T is given and p is searched, or the other way round
    int IsoFu = iso_v;       // index in iso_captions
    int optIsoPhase = phase_V;
    double txtTpVorgabe = 0;  // given T [K] or p [kPa]
    double txtFuConst = 0;    // value of the function, displayed unit
    std::string txtTpCalc;    // result, or why there is none
    std::string result_label;
    struct Success {
        double T = 0, p = 0;  // [K], [kPa]
        int IsoIn = 0, IsoFu = 0, optIsoPhase = phase_V;
        double txtFuConst = 0;
    };
    std::optional<Success> last;  // for "Reset Last"
};

struct IsoOpened {
    std::optional<Message> refusal{};
    IsoCalculator calculator;
};
// Opens on T and p of data point 0; refused while one of them is 0.
IsoOpened open_iso_calculator(const Session& session);

// "  T/K = " or "p/kPa = ", the label of the given value.
std::string_view iso_given_label(const IsoCalculator& calculator);
Quantity iso_quantity(const IsoCalculator& calculator);                              // the function
std::string_view iso_unit(const Session& session, const IsoCalculator& calculator);  // of the function

// After another choice of optIsoTp, OptIsoFu or optIsoPhase: given value and function of the state of data
// point 0.
void show_current_state(const Session& session, IsoCalculator& calculator);

// Takes the texts of the boxes txtTpVorgabe (0) and txtFuConst (1); the first that is no value is told with
// its rule, and nothing is taken.
std::optional<BoxRefusal> take_iso_boxes(IsoCalculator& calculator, const std::string& given,
                                         const std::string& function);

// cmdCalc: searches from the state of data point 0, which becomes the state found; what has changed with it.
// None: txtTpCalc is "No solution found", and the document is as it was.
std::optional<Changes> iso_calculate(Session& session, IsoCalculator& calculator);

// The state of data point 0 in mode 8.
Outcome iso_state(const Session& session);

// cmdReset: data point 0 and the boxes as of the last success, and what has changed; "No solution" without
// one.
Changes iso_reset(Session& session, IsoCalculator& calculator);

}  // namespace quom
