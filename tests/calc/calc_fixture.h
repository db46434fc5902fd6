// A session on the starter database with one substance and one set of models, and a user who listens.
#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calc/calc_batch.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "support/queued_messages.h"
#include "support/starter.h"

namespace quom::test {

struct Bench {
    Session s;
    QueuedMessages listener;

    explicit Bench(std::string_view cas = propane, int eos = eos_peng_robinson)
        : s(substance_session(cas, eos)) {
        s.messages = &listener;
        s.models.EVPKode = evp_wagner;
        s.models.HLVKode = hlv_eos;
        s.models.cpKode = s.substance.haveSinh ? 2 : 1;
        set_eos(eos);
    }
    void set_eos(int code) {
        select_eos(s, code);
        s.calc.GlobalCalc = s.models.Konzept;
    }
    void specific_units() {
        s.units.EnergyMode = 3, s.units.VolumeMode = 1;
        s.units.vFactor = 1.0 / static_cast<double>(s.substance.MolMass);
    }
    TpRhoPoint& point() { return s.exp.points.front(); }
    // One calculation on the direct input; rho goes into both columns.
    CalcBatchResult run(int mode, double T, double p, double rho = 0.0, bool text = true) {
        point() = {.T = T, .p = p, .rhoV = static_cast<float>(rho), .rhoL = static_cast<float>(rho)};
        return CalcBatch(s, {.Mode = mode, .Quiet = !text, .want_text = text});
    }
    CalcBatchResult tank(int mode, double m, double V, double T) {
        s.calc.tank = {.m = static_cast<float>(m), .V = static_cast<float>(V), .T = static_cast<float>(T)};
        return CalcBatch(s, {.Mode = mode});
    }
    const BatchResult& record() const { return s.calc.BatchResults.front(); }
};

}  // namespace quom::test
