// Does one job of bench_engine a given number of times, so that its instructions can be counted:
//     count_engine JOB TIMES
// instructions.sh runs it twice under callgrind and divides the difference.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "../tests/support/starter.h"
#include "engine/iso_search.h"
#include "engine/saturation.h"
#include "engine/state_columns.h"
#include "engine/state_kernel.h"
#include "engine/thermo_functions.h"
#include "yardstick.h"

namespace {

using namespace quom;

constexpr std::size_t States = 512;
constexpr int Searches = 64;

double search_T(int i) { return 380.0 + 3.0 * i; }
double search_p(int i) { return 100.0 + 45.0 * i; }

struct Work {
    std::shared_ptr<const Fluid> fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    std::vector<double> T, p, h;  // h: of the searches
    StateColumns columns;
    std::vector<yardstick::State> rows = std::vector<yardstick::State>(States);
    double sum = 0;
    Work() {
        for (std::size_t i = 0; i < States; ++i) {
            const double x = static_cast<double>(i * 379 % States) / States,
                         y = static_cast<double>(i) / States;
            T.push_back(369.89 * (0.3 + 2.7 * x));
            p.push_back(1e-3 * std::exp(y * std::log(3e8)));
        }
        for (int i = 0; i < Searches; ++i) h.push_back(yardstick::state(search_T(i), search_p(i)).h);
    }
};

std::size_t single(Work& w) {
    for (std::size_t i = 0; i < States; ++i) {
        const VolumeResult r = VolumeTp(*w.fluid, w.T[i], w.p[i]);
        w.sum += ThermoState(*w.fluid, w.T[i], w.p[i], r.VFlag ? r.vV : r.vL).h;
    }
    return States;
}
std::size_t batch(Work& w, const StateKernel& kernel) {
    states_at(kernel, *w.fluid, w.T, w.p, w.columns);
    return States;
}
std::size_t batch_portable(Work& w) { return batch(w, portable_kernel()); }
std::size_t batch_vectors(Work& w) { return batch(w, best_kernel()); }
std::size_t yardstick_states(Work& w) {
    yardstick::states(w.T.data(), w.p.data(), States, w.rows.data());
    return States;
}
std::size_t isotherm_portable(Work& w) {
    states_on(*make_isotherm(portable_kernel(), *w.fluid, 260.0), w.p, w.columns);
    return States;
}
std::size_t isotherm_vectors(Work& w) {
    states_on(*make_isotherm(*w.fluid, 260.0), w.p, w.columns);
    return States;
}
std::size_t yardstick_isotherm(Work& w) {
    yardstick::isotherm(260.0, w.p.data(), States, w.rows.data());
    return States;
}
double saturation_T(int i) { return 200.0 + 2.5 * i; }
double saturation_p(int i) { return std::exp(8.29 * i / Searches); }
std::size_t pLV(Work& w) {
    for (int i = 0; i < Searches; ++i) w.sum += pLV_EOS(*w.fluid, saturation_T(i)).p;
    return Searches;
}
std::size_t yardstick_pLV(Work& w) {
    for (int i = 0; i < Searches; ++i) w.sum += yardstick::vapor_pressure(saturation_T(i));
    return Searches;
}
std::size_t TLV(Work& w) {
    for (int i = 0; i < Searches; ++i) w.sum += TLV_EOS(*w.fluid, saturation_p(i)).T;
    return Searches;
}
std::size_t yardstick_TLV(Work& w) {
    for (int i = 0; i < Searches; ++i) w.sum += yardstick::boiling_temperature(saturation_p(i));
    return Searches;
}
std::size_t ph(Work& w) {
    for (int i = 0; i < Searches; ++i) {
        const double T = search_T(i), p = search_p(i);
        const IsoInput input{.What = iso_find_T,
                             .Column = iso_h,
                             .Target = w.h[static_cast<std::size_t>(i)],
                             .phase = phase_V,
                             .given = p,
                             .start = 1.05 * T};
        w.sum += IsoSearch(*w.fluid, input).value;
    }
    return Searches;
}
std::size_t yardstick_ph(Work& w) {
    for (int i = 0; i < Searches; ++i) {
        const double T = search_T(i), p = search_p(i);
        w.sum += yardstick::T_of_h(p, w.h[static_cast<std::size_t>(i)], 1.05 * T);
    }
    return Searches;
}

struct Job {
    const char* name;
    std::size_t (*run)(Work&);
};
const Job Jobs[] = {{"single", single},
                    {"batch_portable", batch_portable},
                    {"batch_vectors", batch_vectors},
                    {"yardstick_states", yardstick_states},
                    {"isotherm_portable", isotherm_portable},
                    {"isotherm_vectors", isotherm_vectors},
                    {"yardstick_isotherm", yardstick_isotherm},
                    {"pLV", pLV},
                    {"yardstick_pLV", yardstick_pLV},
                    {"TLV", TLV},
                    {"yardstick_TLV", yardstick_TLV},
                    {"ph", ph},
                    {"yardstick_ph", yardstick_ph}};

}  // namespace

int main(int argc, char** argv) {
    if (argc == 1) {
        for (const Job& job : Jobs) std::puts(job.name);
        return EXIT_SUCCESS;
    }
    for (const Job& job : Jobs) {
        if (argc != 3 || std::strcmp(job.name, argv[1]) != 0) continue;
        Work work;
        std::size_t items = 0;
        for (int i = std::atoi(argv[2]); i > 0; --i) items += job.run(work);
        std::printf("%zu\n", items);
        return work.sum == 0.1 ? EXIT_FAILURE : EXIT_SUCCESS;
    }
    std::fprintf(stderr, "usage: count_engine JOB TIMES\n");
    return EXIT_FAILURE;
}
