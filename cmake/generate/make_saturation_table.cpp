// Writes the saturation curves of the three shapes of codes 2 to 6 as constants of the program:
//     make_saturation_table FILE.CPP
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>

#include "engine/reduced_saturation.h"

namespace {

// Hexadecimal, so that every bit arrives.
std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

void write_curve(std::ostream& out, const char* name, const quom::SaturationTable& table) {
    out << "const SaturationTable " << name << " = {\n    .s = " << number(table.s)
        << ",\n    .m = " << number(table.m) << ",\n    .tc = " << number(table.tc)
        << ",\n    .wc = " << number(table.wc) << ",\n    .slope_c = " << number(table.slope_c)
        << ",\n    .theta_end = " << number(table.theta_end)
        << ",\n    .cells_per_theta = " << number(table.cells_per_theta) << ",\n    .c = {\n";
    for (const auto& cell : table.c) {
        out << "        {";
        for (const auto& power : cell) {
            out << "{" << number(power[0]) << ", " << number(power[1]) << ", " << number(power[2]) << "}, ";
        }
        out << "},\n";
    }
    out << "    }};\n\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_saturation_table FILE.CPP\n";
        return 1;
    }
    struct Row {
        const char* name;
        double c_of_b, d_of_b;
    };
    const Row rows[] = {{"VanDerWaalsCurve", 0.0, 0.0},
                        {"RedlichKwongCurve", 0.0, 1.0},
                        {"PengRobinsonCurve", 1.0 - std::sqrt(2.0), 1.0 + std::sqrt(2.0)}};
    std::ofstream out(argv[1]);
    out << "// Written by make_saturation_table.\n#include \"engine/reduced_saturation.h\"\n\nnamespace quom "
           "{\n\n";
    for (const Row& row : rows) {
        const auto table = quom::make_saturation_table(row.c_of_b, row.d_of_b);
        if (!table) {
            std::cerr << "no saturation curve for " << row.name << '\n';
            return 1;
        }
        write_curve(out, row.name, *table);
    }
    out << "}  // namespace quom\n";
    return out.good() ? 0 : 1;
}
