// Fitted parameters into the equations of a substance.
#pragma once
#include "base/messages.h"
#include "fitting/fit.h"
#include "substance/substance_constants.h"

namespace quom {

// Phase whose cp was fitted.
enum class CpPhase { ideal_gas, liquid, solid };

struct Transfer {
    SubstanceConstants substance;  // as it was where nothing was transferred
    bool applied = false;
    Message message;  // what was done, or why not
};

// Writes the parameters of a fit, converted to the form of the substance's equation and rounded to single
// precision, with the whole kelvin of the lowest and highest active T as its limits. The equations of the
// substance use the common logarithm. Refused: models without an equation in the record, and parameters that
// the record would read as another form. optcpPhase counts for heat capacities.
Transfer apply_fit(const SubstanceConstants& substance, const FitInput& input, const FitResult& result,
                   CpPhase optcpPhase);

}  // namespace quom
