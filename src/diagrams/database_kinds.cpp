#include "diagrams/database_kinds.h"

#include <algorithm>
#include <iterator>

namespace quom {
namespace {

struct Row {
    Kind kind;
    DatabaseFunction function;
};
using D = DatabaseFunction;
constexpr Row rows[] = {
    {Kind::db_rhoL, D::rhoL},
    {Kind::db_vL, D::rhoL},
    {Kind::db_rhoS, D::rhoS},
    {Kind::db_hLV, D::hLV},
    {Kind::db_cpId_polynomial, D::cpId_polynomial},
    {Kind::db_cpId_sinh, D::cpId_sinh},
    {Kind::db_cpL, D::cpL},
    {Kind::db_cpS, D::cpS},
    {Kind::db_frost_kalkwarf, D::frost_kalkwarf},
    {Kind::db_wagner, D::wagner},
    {Kind::db_antoine_low, D::antoine_low},
    {Kind::db_antoine_high, D::antoine_high},
    {Kind::db_august, D::august},
    {Kind::db_kfw, D::kfw},
    {Kind::db_kfr, D::kfr},
    {Kind::db_thompson, D::thompson},
};

}  // namespace

DatabaseFunction database_function(Kind kind) {
    const Row* const row = std::ranges::find(rows, kind, &Row::kind);
    return row == std::end(rows) ? D::none : row->function;
}

double database_displayed(Kind kind, double M, const UnitFactors& factors, double value) {
    switch (kind_info(kind).y) {
        case AxisQuantity::v:
            return M / value * factors.vFactor;
        case AxisQuantity::p:
            return value * factors.pFactor;
        case AxisQuantity::rho:
            return value;
        default:
            return value * factors.uFactor;
    }
}

}  // namespace quom
