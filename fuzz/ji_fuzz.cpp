// Any bytes as a parameter file of the Tovarn/Ji equations, for a fluid that is used afterwards.
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "engine/fluid.h"
#include "engine/tovarn_ji.h"
#include "engine/volume_solver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quom;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const Eos code : {Eos::tovarn_ji_1, Eos::tovarn_ji_2}) {
        FluidInput input;
        if (!ReadDjipar(bytes, code, input.eos_input).empty()) continue;
        input.substance.MolMass = 44.0956f;
        input.substance.Tcr = 369.89;
        input.substance.pcr = 4251.2;
        input.models.EOSKode = code;
        const auto fluid = make_fluid(std::move(input));
        for (const double T : {150.0, 300.0, 369.89, 600.0}) {
            const VolumeResult r = VolumeTp(*fluid, T, 1000.0);
            const double v = r.VFlag ? r.vV : r.vL;
            if (r.reason == Reason::none && !(v > 0.0 && std::isfinite(v))) std::abort();
        }
    }
    return 0;
}
