// The constants of a substance, unpacked from a database record; "cell" is the value cell it comes from.
#pragma once
#include <array>
#include <cstdint>
#include <string>

namespace quom {

// Validity limits of an equation, whole kelvin; TLo 0 marks the equation as absent.
struct TLimits {
    std::int16_t TLo = 0, THi = 0;
    bool operator==(const TLimits&) const = default;
};

// All fields are written by unpack_record and by the database editor; KorreliereEVP writes the correlated
// sets.
struct SubstanceConstants {
    std::string StoffName;            // name in the language in force, up to its first ";"
    std::string StoffFormula;         // 12 characters at most
    std::string StoffFormulaCompact;  // without any blank
    std::string StoffStructure;       // structural formula
    std::string StoffCAS;             // CAS registry number

    float MolMass = 0;         // M [kg/kmol], cell 0
    double Tcr = 0;            // [K], cell 6
    double pcr = 0;            // [kPa], cell 7
    double rhocrDB = 0;        // rho(cr) [kg/m^3], cell 8
    double vcrDB = 0;          // v(cr) = M / rhocrDB [m^3/kmol]
    double omega = 0;          // acentric factor, cell 9
    float Tnb = 0;             // normal boiling T [K], cell 10
    float Ttr = 0, ptr = 0;    // triple point [K], [kPa], cells 91, 92
    float SecondMeltingT = 0;  // [K], cell 93
    float dfH0 = 0, dfG0 = 0;  // formation, ideal gas, 298.15 K [kJ/kmol], cells 85, 87
    float S0abs = 0;           // conventional entropy [kJ/(kmol K)], cell 89
    double dFs = 0;            // (dfH0 - dfG0)/298.15 [kJ/(kmol K)], when both are given

    std::array<float, 7> RhoL{};  // A..G [kg/m^3], cells 13-19
    float RhoLTcr = 0;            // T(cr) of the equation = H [K], cell 20
    std::int16_t RhoLTLo = 0, RhoLTHi = 0;
    std::array<float, 4> RhoS{};  // A..D [kg/m^3], cells 118-121
    std::int16_t RhoSTLo = 0, RhoSTHi = 0;

    std::array<float, 9> KFDB{};  // Frost/Kalkwarf A..I, cells 24-32
    std::int16_t KFTLo = 0, KFTHi = 0;
    std::array<float, 3> AntLo{};  // Antoine, low pressure, cells 36-38
    std::int16_t AntLoTLo = 0, AntLoTHi = 0;
    std::array<float, 3> AntHi{};  // Antoine, high pressure, cells 42-44
    std::int16_t AntHiTLo = 0, AntHiTHi = 0;
    std::array<float, 8> Wagner{};       // a1, a2, a3, e3, a4, e4, a5, e5, cells 48-55
    float WagnerTcr = 0, Wagnerpcr = 0;  // [K], [kPa]
    std::int16_t WagnerTLo = 0, WagnerTHi = 0;
    float AugustA = 0, AugustB = 0;     // ln p = A + B/T through T(nb) and the critical point
    std::array<float, 9> KFW{}, KFR{};  // Frost/Kalkwarf sets correlated by KorreliereEVP
    std::array<float, 3> THO{};         // Antoine set correlated by KorreliereEVP
    TLimits KFWLimits, KFRLimits, THOLimits;

    std::array<float, 5> cpPoly{};  // cp(idG) polynomial [kJ/(kmol K)], cells 61-65
    std::int16_t cpPolyTLo = 0, cpPolyTHi = 0;
    std::array<float, 5> cpDIPPR{};  // cp(idG) sinh/cosh, cells 69-73
    std::int16_t cpDIPPRTLo = 0, cpDIPPRTHi = 0;
    std::array<float, 5> cpL{};  // [kJ/(kmol K)], cells 77-81
    std::int16_t cpLTLo = 0, cpLTHi = 0;
    std::array<float, 5> cpS{};  // [kJ/(kmol K)], cells 110-114
    std::int16_t cpSTLo = 0, cpSTHi = 0;
    bool havePoly = false, haveSinh = false, HasCpL = false, HasCpS = false;

    std::array<float, 6> HLV{};  // delta(LV)h: A, beta, C, D, E, alpha [kJ/kmol], cells 96-101
    float HLVTcr = 0;            // its T(cr) [K], cell 102
    std::int16_t HLVTLo = 0, HLVTHi = 0;
    float WatsonHLV = 0, WatsonT = 0;  // delta(LV)h [kJ/kmol] at WatsonT [K]

    bool operator==(const SubstanceConstants&) const = default;
};

}  // namespace quom
