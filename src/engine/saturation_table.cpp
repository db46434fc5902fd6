// Which curve belongs to which equation of state.
#include "engine/reduced_saturation.h"

namespace quom {
namespace {

// A constant of the program under a shared pointer that owns nothing.
std::shared_ptr<const SaturationTable> constant(const SaturationTable& table) {
    return {std::shared_ptr<const SaturationTable>(), &table};
}

}  // namespace

std::shared_ptr<const SaturationTable> saturation_table_for(const EosBlock& block, Eos code) {
    switch (code) {
        case Eos::van_der_waals:
        case Eos::berthelot:
            return constant(VanDerWaalsCurve);
        case Eos::redlich_kwong:
        case Eos::soave:
            return constant(RedlichKwongCurve);
        case Eos::peng_robinson:
            return constant(PengRobinsonCurve);
        case Eos::tovarn_ji_1:
        case Eos::tovarn_ji_2: {
            // c/b, d/b = (u -+ sqrt(u^2 + 4 u))/2 with u = JiCd
            const double u = block.JiCd, root = std::sqrt(u * u + 4.0 * u);
            return make_saturation_table(0.5 * (u - root), 0.5 * (u + root));
        }
        default:
            return nullptr;
    }
}

}  // namespace quom
