// The line that tells what the numbers of a window rest on.
#include "report/basis_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/starter.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

TEST(BasisLine, names_substance_models_and_reference_state) {
    FluidInput input{
        .substance = test::starter_substance(test::propane), .models = {}, .eos_input = {}, .reference = {}};
    input.models = test::proposed_models(input.substance, Eos::peng_robinson);
    input.models.cpKode = CpForm::sinh_cosh;
    EXPECT_EQ(basis_line(*make_fluid(input)),
              "Propane · Peng / Robinson, GLOBAL concept · h = s = 0 at 298.15 K, 101.325 kPa, ideal gas · "
              "cp(idG): sinh/cosh");
    input.models.Konzept = false;
    input.models.EVPKode = Evp::frost_kalkwarf;
    input.reference.RefKode = reference_formation;  // -104.39 kJ/mol of the data
    const std::string partial = basis_line(*make_fluid(input));
    EXPECT_THAT(partial, HasSubstr("PARTIAL concept, p(LV): Frost/Kalkwarf"));
    EXPECT_THAT(partial, HasSubstr("h = -104390 kJ/kmol, s = 270.3 kJ/(kmol K) at 298.15 K"));
    input.models.cpKode = CpForm::none;
    EXPECT_THAT(basis_line(*make_fluid(input)), HasSubstr("no absolute h and s"));
}

}  // namespace
}  // namespace quom
