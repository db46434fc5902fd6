// Which data points a calculation runs over.
#pragma once
#include "session/session.h"

namespace quom {

// Number of data points without the direct input.
int data_point_count(const Session& s);

// First data point whose mark is not "deleted"; 0 when there is none.
int first_active_point(const Session& s);

// The point one step (+1 or -1) from `point`; one point with the mark is skipped, a second one is not. The
// point itself at the ends of the list.
int stepped_point(const Session& s, int point, int step);

// A blank record for every data point and the direct input.
void clear_results(Session& s);

}  // namespace quom
