// Equations with known parameters, for made-up measurements.
#pragma once
#include <vector>

#include "fitting/fit.h"

namespace quom::test {

// Parameters of an equation and where it holds.
struct KnownFit {
    const char* name;
    FitModel model;
    std::vector<double> par;
    double from, to;  // x, or T [K]
    FitConstants constants;
};

// One set of parameters or more of every model; those of substances from handbook tables.
inline std::vector<KnownFit> known_fits() {
    const FitConstants none{}, lg{true, 0, 0}, propane{false, 369.89, 4251.2},
        propane_lg{true, 369.89, 4251.2};
    const double ln10 = 2.302585092994046;
    const auto thodos = [](std::vector<double> par, const FitConstants& constants) {
        par[3] = thodos_D(par[1], constants);
        return par;
    };
    return {
        {"polynomial", FitModel::polynomial, {2, -1, 0.5, 0.25, -0.1, 0.01}, -3, 4, none},
        {"combination", FitModel::combination, {2, -1, 0.5, 0.25, 3, -2, 1.5}, 0.5, 4, none},
        {"water, ln", FitModel::august_rankine, {52, 6790, -5}, 280, 370, none},
        {"water, lg", FitModel::august_rankine, {52 / ln10, 6790 / ln10, -5}, 280, 370, lg},
        {"water, ln", FitModel::antoine, {16.3872, 3885.70, 230.170}, 280, 440, none},
        {"water, lg", FitModel::antoine, {7.19621, 1730.63, 233.426}, 280, 370, lg},
        {"propane, ln", FitModel::frost_kalkwarf, {48, -3600, 273.15, -5.5, 3}, 190, 360, none},
        {"propane, lg", FitModel::frost_kalkwarf, {21, -1560, 273.15, -5.5, 1.3}, 190, 360, lg},
        {"propane, ln", FitModel::frost_thodos, thodos({37, -3100, 270, 0, 3}, propane), 190, 360, propane},
        {"propane, lg", FitModel::frost_thodos, thodos({16, -1350, 270, 0, 1.5}, propane_lg), 190, 360,
         propane_lg},
        {"water, ln", FitModel::dippr_pressure, {66.7412, -7258.2, -7.3037, 4.1653e-6, 2}, 280, 640, none},
        {"water, lg",
         FitModel::dippr_pressure,
         {66.7412 / ln10, -7258.2 / ln10, -7.3037, 4.1653e-6 / ln10, 2},
         280,
         640,
         lg},
        {"water", FitModel::wagner, {-7.76451, 1.45838, -2.77580, -1.23303}, 280, 640, {false, 647.3, 22120}},
        {"propane", FitModel::rackett, {60.66, 0.27453, 0.29359}, 100, 369, {false, 369.83, 0}},
        {"propane", FitModel::leuna, {250, -0.6, 0.0011, -1.5e-6, 420}, 180, 360, propane},
        {"propane", FitModel::density_polynomial, {735, -0.9, 0.0015, -4e-6}, 180, 320, none},
        {"acetone", FitModel::majer, {46950, 0.2826, 0.2826}, 200, 500, {false, 508.2, 0}},
        {"propane",
         FitModel::dippr_vaporization,
         {29209, 0.78237, -0.77319, 0.39246, 0.05},
         100,
         360,
         propane},
        {"propane", FitModel::cp_polynomial, {-4.224, 0.306264, -1.58632e-4, 3.21455e-8, 0}, 250, 1400, none},
        {"water", FitModel::shomate, {30.092, 0.006832514, 6.793435e-6, -2.53448e-9, 82139}, 500, 1700, none},
        {"water", FitModel::dippr_cp, {33.363, 26.79, 2610.5, 8.896, 1169}, 100, 2200, none},
    };
}

}  // namespace quom::test
