// The words on the equation of state in force: law, constants with units, the critical volume it implies.
#include "report/eos_report.h"

#include <gtest/gtest.h>

namespace quom {
namespace {

struct Row {
    Eos code;
    const char* head;
    const char* text;
};
const Row Rows[] = {
    {Eos::none, "", ""},
    {Eos::ideal_gas, "Selected: Ideal gas equation", "v = R T/p\n"},
    {Eos::soave, "CEOS Soave / Redlich / Kwong\np = R T/(v - b) - a/((v + c)(v + d))",
     "a(T) = a (1 + m (1 - sqrt(T/T(cr))))^2\n\n"
     "a     = 150  kPa m^6/kmol^2\nm     = .5\nb     = .25  m^3/kmol\nc     = 0  m^3/kmol\nd     = .125  "
     "m^3/kmol\n"
     "\ncrit. volume calculated fromT(cr) and p(cr):\nv(cr) = .75  m^3/kmol\nrho   = 220  kg/m^3\n"},
    {Eos::virial_berthelot, "VIRIAL-EOS Berthelot\nv = R T/p + B(T),  B = b - a(T)/(R T)",
     "a(T) = a T^n(a), the same for b, c, d\n\n"
     "a     = 150  kPa m^6/kmol^2 K^-n(a)\nn(a)  = .5\nb     = .25  m^3/kmol\nc     = 0  m^3/kmol\n"
     "d     = .125  m^3/kmol\n"},
    {Eos::virial_manual, "VIRIAL-EOS manual input\nv = R T/p + B(T),  B = b0 - b1/T^b2",
     "b0    = .25  m^3/kmol\nb1    = 900\nb2    = 1.5\n"},
    {Eos::pitzer_curl, "VIRIAL-EOS Pitzer / Curl\nv = R T/p + B(T),  B = (f0 + omega f1) R T(cr)/p(cr)",
     "omega = .15\n"},
    {Eos::tovarn_ji_2, "CEOS Tovarn / Ji II\np = R T/(v - b) - a/((v + c)(v + d))",
     "a(cr) = 1  kPa m^6/kmol^2\nB1    = 2\nZ(cr) = 3\nP3    = 4\nP4    = 5\nP5    = 6\nOa    = 7\nOb    = "
     "8\n"
     "Cd    = 9\n"},
};

// Constants with round numbers in the fields that an equation uses.
Fluid fluid_of(Eos code) {
    Fluid fluid;
    fluid.models.EOSKode = code;
    fluid.substance.omega = 0.15;
    EosBlock& e = fluid.eos;
    e.EOSa = 150.0;
    e.EOSb = 0.25;
    e.EOSd = 0.125;
    e.EOSna = 0.5;
    if (code == Eos::soave) {
        e.AlphaForm = 2;
        e.vcrEOS = 0.75;
        e.rhocrEOS = 220.0;
    } else if (code == Eos::virial_manual) {
        e.EOSnb = 900.0;
        e.EOSm = 1.5;
    } else if (code == Eos::tovarn_ji_2) {
        double value = 0.0;
        for (double* x : {&e.JiAc, &e.JiB1, &e.JiZc, &e.JiP3, &e.JiP4, &e.JiP5, &e.JiOa, &e.JiOb, &e.JiCd})
            *x = ++value;
    }
    return fluid;
}

TEST(EosReport, LawAndConstants) {
    for (const Row& row : Rows) {
        const EosReport report = eos_report(fluid_of(row.code));
        EXPECT_EQ(report.head, row.head);
        EXPECT_EQ(report.text, row.text) << row.head;
    }
}

}  // namespace
}  // namespace quom
