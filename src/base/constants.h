// Fixed constants of the workbench.
#pragma once

namespace quom {

inline constexpr double RGas = 8.31451;            // universal gas constant [kJ/(kmol K)], CODATA 1986
inline constexpr double LnTen = 2.30258509299405;  // ln 10, between log10 and ln in vapor pressure equations
inline constexpr double TZeroC = 273.15;           // Celsius offset in Antoine and Frost/Kalkwarf [K]
inline constexpr double pNorm = 101.325;           // normal pressure [kPa]
inline constexpr double TNorm = 298.15;            // temperature of the formation data [K]
inline constexpr double TinyT = 1e-6;              // any T, p, T*p or density below this is "not available"
inline constexpr double NotAvailable = 1e+30;      // result value "not available" of the calculation driver
inline constexpr float TrueZero = 1e-37f;          // value cell of a database record: a zero that was given

}  // namespace quom
