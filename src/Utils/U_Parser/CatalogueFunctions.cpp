#include <algorithm>
#include <cmath>
#include <string>

#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_Parser/Catalogue.h"
#include "Utils/U_Parser/CatalogueEntry.h"
#include "Utils/U_Parser/NumberText.h"
#include "Utils/U_Parser/ParsingException.h"

namespace KM::Parsing {
namespace {

constexpr double Pi = 3.141592653589793;
constexpr double Epsilon = 1e-08;
// Below it a divisor counts as none.
constexpr double SmallestDivisor = 5e-09;

bool IsAutomatic(double v) { return v > AutomaticLimit; }

double RadToDeg(double v) { return IsAutomatic(v) ? v : v / Pi * 180; }
double DegToRad(double v) { return IsAutomatic(v) ? v : v * Pi / 180; }

// Reflected, not shifted, whatever the help says: 270 degrees give 90. Hosts live with these values.
double Folded(double v, double half) { return IsAutomatic(v) || !(v > half) ? v : 2 * half - v; }
double ToPlusMinusPi(double v) { return Folded(v, Pi); }
double ToPlusMinus180(double v) { return Folded(v, 180); }

// Right for a positive divisor. A negative one adds itself to a negative rest: Mod(-1, -3) is -4.
double Mod(double a, double b) {
    if (std::abs(b) < SmallestDivisor) return a;
    const double quotient = a / b;
    const double rest = (quotient - TruncateToInt(quotient)) * b;
    return rest < 0.0 ? rest + b : rest;
}

double Sgn(double v) { return v < 0.0 ? -1.0 : v > 0.0 ? 1.0 : 0.0; }
double Morph(double min, double max, double t) { return (max - min) * t + min; }
double UnMorph(double min, double max, double v) { return max == min ? 0.0 : (v - min) / (max - min); }
double Min(double a, double b) { return std::min(a, b); }
double Max(double a, double b) { return std::max(a, b); }
// The upper limit wins if the limits are exchanged.
double Bound(double v, double min, double max) { return std::min(max, std::max(min, v)); }
double Sqr(double v) { return v * v; }
double Sqrt(double v) { return std::sqrt(v); }
double Pow(double a, double b) { return std::pow(a, b); }
double Log(double v) { return std::log(v); }
double Log10(double v) { return std::log10(v); }
double Fractional(double v) { return v - std::floor(v); }
double Round(double v) { return std::floor(v + 0.5); }
double Floor(double v) { return std::floor(v); }
double Ceil(double v) { return std::ceil(v); }
double Exp(double v) { return std::exp(v); }
double SinH(double v) { return std::sinh(v); }
double CosH(double v) { return std::cosh(v); }
double Abs(double v) { return std::abs(v); }
double Sin(double v) { return std::sin(v); }
double Cos(double v) { return std::cos(v); }
double Tan(double v) { return std::tan(v); }
double ASin(double v) { return std::asin(v); }
double ACos(double v) { return std::acos(v); }
double ATan(double v) { return std::atan(v); }
double ATan2(double y, double x) { return std::atan2(y, x); }
double IsNear(double a, double b, double tolerance) { return tolerance > std::abs(a - b) ? 1.0 : 0.0; }
double IsValid(double v) { return v > InvalidLimit ? 1.0 : 0.0; }
double IsAutomaticNumber(double v) { return IsAutomatic(v) ? 1.0 : 0.0; }

template <const double& Number>
class Constant final : public Cloned<Constant<Number>, 0> {
public:
    explicit Constant(const CatalogueEntry::Description& description)
        : Cloned<Constant<Number>, 0>(description, &Number) {}
    double ToDouble() const override { return Number; }
};

/// Exchanges what two holders of one kind hold.
class Swap final : public Cloned<Swap, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        if (subExpressions.size() == 2 && Try(*subExpressions[0], *subExpressions[1])) return 0.0;
        throw ParsingException("In SwapFunc. Isn't possible to cast both expressions to doubles or strings holders!",
                               __LINE__);
    }

private:
    static bool Try(Expression& a, Expression& b) {
        if (a.IsDoubleHolder() && b.IsDoubleHolder()) {
            const double first = a.ToDouble();
            a.Set(b.ToDouble());
            b.Set(first);
        } else if (a.IsStringHolder() && b.IsStringHolder()) {
            const std::string first = a.ToString();
            a.Set(b.ToString());
            b.Set(first);
        } else {
            return false;
        }
        return true;
    }
};

// Statements: whichever way they go, their value is 0.0. A condition is rounded, so that 0.5 is true and 0.4 is not.

class If final : public Cloned<If, 2> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        if (Int(0) != 0) Number(1);
        return 0.0;
    }
};

class If3 final : public Cloned<If3, 3> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        Number(Int(0) != 0 ? 1 : 2);
        return 0.0;
    }
};

class Dump final : public Cloned<Dump, 1> {
public:
    using Cloned::Cloned;
    double ToDouble() const override {
        const std::string text = IsText(0) ? Text(0) : NumberText(Number(0));
        Verbose::WriteMessage_1(Verbose::EMessageType::System, "DumpFunc: " + text);
        return 0.0;
    }
};

}  // namespace

void RegisterFunctions(ParsingSession& session) {
    Register<Constant<Pi>>(session, {"Pi", "Pi value."});
    Register<Constant<Automatic>>(session, {"Inf", "Inf value."});
    Register<Constant<Epsilon>>(session, {"Eps", "Eps value."});
    Register<Constant<Automatic>>(session, {"Automatic", "Automatic value."});
    Register<Constant<Invalid>>(session, {"Invalid", "Invalid value."});
    Register<Of1<RadToDeg>>(session, {"RadToDeg", "Convert from Radians to Degree."});
    Register<Of1<DegToRad>>(session, {"DegToRad", "Convert from Degree to Radians."});
    Register<Of1<ToPlusMinusPi>>(session, {"ToPlusMinusPi", "Convert a[0.. 2 * PI] in[-PI, +PI]."});
    Register<Of1<ToPlusMinus180>>(session, {"ToPlusMinus180", "Convert a[0.. 360] in[-180, +180]."});
    Register<Of2<Mod>>(session, {"Mod", "Modulo."});
    Register<Of1<Sgn>>(session, {"Sgn", "Sgn for a signed type {-1, 0, 1}."});
    Register<Of3<Morph>>(session, {"Morph", "Linear interpolation. (min, max, t)."});
    Register<Of3<UnMorph>>(session, {"UnMorph", "Reversed linear interpolation. (min, max, t)."});
    Register<Of2Backwards<Min>>(session, {"Min", "Minimium between 2 values."});
    Register<Of2Backwards<Max>>(session, {"Max", "Maximium between 2 values."});
    Register<Swap>(session, {"Swap", "Swap two values."});
    Register<If>(session, {"If", "If(firstParam == true) do second."});
    Register<If>(session, {"If2", "If(firstParam == true) do second."});
    Register<If3>(session, {"If3", "If3(firstParam == true) do second else do third."});
    Register<Of3<Bound>>(session, {"Bound", "Bound a value. (value, min, max)."});
    Register<Of1<Sqr>>(session, {"Sqr", "V^2."});
    Register<Of1<Sqrt>>(session, {"Sqrt", "Square root."});
    Register<Of2<Pow>>(session, {"Pow", "P1^P2."});
    Register<Of1<Log>>(session, {"Log", "Natural logarithm."});
    Register<Of1<Log10>>(session, {"Log10", "Logarithm in 10 base."});
    Register<Of1<Fractional>>(session, {"Fractional", "Return fractional part."});
    Register<Of1<Round>>(session, {"Round", ""});
    Register<Of1<Floor>>(session, {"Floor", ""});
    Register<Of1<Ceil>>(session, {"Ceil", ""});
    Register<Of1<Exp>>(session, {"Exp", ""});
    Register<Of1<SinH>>(session, {"SinH", ""});
    Register<Of1<CosH>>(session, {"CosH", ""});
    Register<Of1<Abs>>(session, {"Abs", ""});
    Register<Of1<Sin>>(session, {"Sin", ""});
    Register<Of1<Cos>>(session, {"Cos", ""});
    Register<Of1<Tan>>(session, {"Tan", ""});
    Register<Of1<ASin>>(session, {"ASin", ""});
    Register<Of1<ACos>>(session, {"ACos", ""});
    Register<Of1<ATan>>(session, {"ATan", ""});
    Register<Of2<ATan2>>(session, {"ATan2", ""});
    Register<Of3<IsNear>>(session, {"IsNear", ""});
    Register<Of1<IsValid>>(session, {"IsValid", ""});
    Register<Of1<IsAutomaticNumber>>(session, {"IsAutomatic", ""});
}

void RegisterDump(ParsingSession& session) { Register<Dump>(session, {"Dump", ""}); }

}  // namespace KM::Parsing
