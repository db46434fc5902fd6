// Experimental data: measured points of T, p, densities, delta(LV)h, cp, and what is done with the list of
// them. Points are counted from 1.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "base/shared_vector.h"

namespace quom {

// One point; entry 0 of the list is the direct input. 0 means "no value".
struct TpRhoPoint {
    std::int16_t Aus = 0;      // -1 inactive
    double T = 0;              // [K]
    double p = 0;              // [kPa]
    float rhoV = 0, rhoL = 0;  // [kg/m^3]
    float HLV = 0;             // delta(LV)h [kJ/kmol]
    float cp = 0;              // [kJ/(kmol K)]
    bool operator==(const TpRhoPoint&) const = default;
};

// The file of a data set: where it came from or was saved to, and what its head says.
struct ExpDataFile {
    std::string ExpFile;     // full path, empty: none
    std::string ExpTitle;    // its file name
    std::string ExpDate;     // of saving, as the file has it
    std::string ExpComment;  // comment of the file
    std::string ExpCAS;      // CAS number of the substance that was measured
    std::string ExpName;     // and its name
    bool operator==(const ExpDataFile&) const = default;
};

struct ExperimentalData {
    SharedVector<TpRhoPoint> points = SharedVector<TpRhoPoint>(1);  // [0] direct input, [1..] measured points
    ExpDataFile file;
    bool ExpGeaendert = false;  // changed since it was loaded or saved
    int optFitFunction = 1;     // column of y: 1 p, 2 rho(L), 3 rho(V), 4 delta(LV)h, 5 cp
    bool operator==(const ExperimentalData&) const = default;
};

// Most points that a data set takes: 40 MB of them.
inline constexpr std::size_t MaxDataPoints = 1000000;

// Number of measured points.
int data_point_count(const ExperimentalData& data);
// The first active measured point, from 1; 0 when there is none.
int first_active_point(const ExperimentalData& data);
// The point one step on; one inactive point is skipped. At the ends the point itself.
int stepped_point(const ExperimentalData& data, int point, int step);

// Columns of the table: T, p, rho(V), rho(L), delta(LV)h, cp.
inline constexpr std::size_t exp_columns = 6;
double exp_value(const TpRhoPoint& point, std::size_t column);
void set_exp_value(TpRhoPoint& point, std::size_t column, double value);

// Drops all measured points and what is known of their file; the direct input stays.
void clear_points(ExperimentalData& data);
// Drops the points first to last; those that are not there are none.
void remove_lines(ExperimentalData& data, int first, int last);
// Turns active points first to last inactive and inactive ones active. No file holds this: nothing counts as
// changed.
void toggle_lines(ExperimentalData& data, int first, int last);
// Ascending; equal keys keep their order.
void sort_by_T(ExperimentalData& data);
void sort_by_p(ExperimentalData& data);

// Inserts the rows of a text before point `at` (behind the last for count + 1): a point a line, up to six
// values in the order of the columns with tabs between them, decimal comma or point; what is left out is 0.
// Lines without any text are none. Returns why nothing was inserted, with the line of the text; empty when
// good.
std::string insert_rows(ExperimentalData& data, int at, std::string_view text);

// A pair of a curve, a graph or a fit.
struct DataPair {
    double x = 0, y = 0;
    bool operator==(const DataPair&) const = default;
};
// T [K] and the column of optFitFunction of the active points.
std::vector<DataPair> T_y_points(const ExperimentalData& data);
// Title of their fit: "p = f(T)", or "y = f(T)".
std::string_view fit_title(const ExperimentalData& data);

struct LnPPoints {
    std::vector<DataPair> pairs;          // 1/(T/K) and ln(p/kPa) of the active points
    std::optional<Message> refusal = {};  // an active point has no T or no p: no pairs
};
LnPPoints ln_p_points(const ExperimentalData& data);

}  // namespace quom
