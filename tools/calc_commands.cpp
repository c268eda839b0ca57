#include "tools/calc_commands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <functional>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "core/units.h"

namespace tavo::calc {

namespace {

/// The arguments of one command, read in order.
class Arguments {
public:
    Arguments(Calculator& calculator, std::span<const std::string> words, char between_rows)
        : calculator_(calculator), words_(words), between_rows_(between_rows) {}

    bool empty() const { return words_.empty(); }
    char between_rows() const { return between_rows_; }
    const confreg::Text& data() const { return calculator_.data(); }

    const std::string& text() {
        const std::string& word = words_.front();  // the number of arguments has been checked
        words_ = words_.subspan(1);
        return word;
    }
    double number(std::string_view meaning);
    double temperature();
    std::int16_t gas();
    EquationOfState model();
    double mu() { return empty() ? 1.5 : number("MU"); }

private:
    long whole(std::string_view meaning, long least, long most);

    Calculator& calculator_;
    std::span<const std::string> words_;
    char between_rows_;
};

/// std::from_chars of the whole word, which may have a plus sign too; invalid_argument where something is left over.
template <class Number>
std::errc read_whole_word(std::string_view word, Number& value) {
    if (word.starts_with('+') && !word.starts_with("+-"))
        word.remove_prefix(1);
    const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    return stop == word.data() + word.size() ? error : std::errc::invalid_argument;
}

double Arguments::number(std::string_view meaning) {
    const std::string& word = text();
    double value = 0.0;
    const std::errc error = read_whole_word(word, value);
    if (error == std::errc::result_out_of_range)
        throw InvalidArgument(std::string(meaning) + " " + word + " is outside the range of numbers");
    if (error != std::errc() || !std::isfinite(value))
        throw InvalidArgument(std::string(meaning) + " is not a number: " + word);
    return value;
}

/// 0 K passes: the loader puts a very small temperature in its place.
double Arguments::temperature() {
    const double t = number("T");
    if (t < 0.0)
        throw InvalidArgument("T " + to_text(t) + " is below 0 K");
    return t;
}

long Arguments::whole(std::string_view meaning, long least, long most) {
    const std::string& word = text();
    long value = 0;
    const std::errc error = read_whole_word(word, value);
    if (error == std::errc::invalid_argument)
        throw InvalidArgument(std::string(meaning) + " is not a whole number: " + word);
    if (error != std::errc() || value < least || value > most)
        throw InvalidArgument(std::string(meaning) + " " + word + " is outside " + std::to_string(least) + " to " +
                              std::to_string(most));
    return value;
}

std::int16_t Arguments::gas() {
    return static_cast<std::int16_t>(whole("GAS", 1, Global::gas_count(data())));
}

EquationOfState Arguments::model() {
    return static_cast<EquationOfState>(whole("MODEL", 0, static_cast<long>(models().size()) - 1));
}

/// Every control character, each of which would break the line or the row for some reader, as a blank.
std::string without_controls(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (result.ends_with('\xC2') && byte >= 0x80 && byte < 0xA0)  // U+0080 to U+009F
            result.back() = ' ';
        else
            result += byte < 0x20 || byte == 0x7F ? ' ' : c;
    }
    return result;
}

/// Every number that is printed passes here.
std::string printed(double x) {
    if (!std::isfinite(x))
        throw FloatingPointError("the result is not a finite number");
    return to_text17(x);
}

/// Fields of one line, separated by tabs; a field may be empty.
class Row {
public:
    Row& operator<<(double x) { return *this << printed(x); }
    Row& operator<<(std::string_view field) {
        if (!first_)
            text_ += '\t';
        first_ = false;
        text_ += without_controls(field);
        return *this;
    }
    std::string text() const { return text_; }

private:
    std::string text_;
    bool first_ = true;
};

/// What every command over a gas begins and ends with.
struct Choice {
    std::int16_t gas;
    EquationOfState model;
};

Choice choice(Arguments& arguments) {
    const std::int16_t gas = arguments.gas();
    return {gas, arguments.model()};
}

constexpr int SLOT = 0;

/// Slot 0 with the gas, loaded for the model at a temperature.
SlotTable loaded(const confreg::Text& data, const Choice& choice, double t, double n, double mu) {
    SlotTable table;
    EquationSlot& slot = table[SLOT];
    slot.gas_number = choice.gas;
    slot.equation = choice.model;
    slot.temperature = t;
    slot.moles = n;
    slot.mu = mu;
    Global::load_slot(data, slot, true);
    return table;
}

void require_amount(double n) {
    if (!(n > 0.0))
        throw InvalidArgument("N " + to_text(n) + " is not an amount above 0 mol");
}

std::string pressure_command(Arguments& arguments) {
    const Choice gas = choice(arguments);
    const double t = arguments.temperature(), n = arguments.number("N"), v = arguments.number("V");
    const SlotTable table = loaded(arguments.data(), gas, t, n, arguments.mu());
    return printed(pressure(table, SLOT, v));
}

/// Solves that converge have never needed a thousandth of it; a chaotic orbit would keep the caller waiting.
constexpr long MOST_STEPS = 1'000'000;

/// Molar volume from the ideal-gas start.
double molar_volume(const SlotTable& table, double p) {
    const EquationSlot& slot = table[SLOT];
    const double ideal = R * slot.temperature / p;
    if (!std::isfinite(ideal))
        throw FloatingPointError("the ideal gas has no volume at " + to_text(p) + " atm");
    const double vm = slot.equation == EquationOfState::IdealGas
                          ? ideal
                          : calcnum::newton("v", slot.equation, table, SLOT, p, slot.temperature, ideal, MOST_STEPS);
    const Model& model = *find_model(slot.equation);
    const double least = std::max(model.covolume(coefficients(slot)), 0.0);
    if (!(vm > least))
        throw FloatingPointError(std::string(model.name) + ": the molar volume at " + to_text(p) + " atm would be " +
                                 to_text(vm) + " l/mol, which is not above " + to_text(least));
    return vm;
}

std::string volume_command(Arguments& arguments) {
    const Choice gas = choice(arguments);
    const double t = arguments.temperature(), p = arguments.number("P"), n = arguments.number("N");
    require_amount(n);
    const SlotTable table = loaded(arguments.data(), gas, t, n, arguments.mu());
    return printed(molar_volume(table, p) * n);
}

std::string temperature_command(Arguments& arguments) {
    const Choice gas = choice(arguments);
    const double v = arguments.number("V"), p = arguments.number("P"), n = arguments.number("N");
    require_amount(n);
    const double mu = arguments.mu();
    const double tc = loaded(arguments.data(), {gas.gas, EquationOfState::IdealGas}, 300.0, n, mu)[SLOT].gas.tc;
    // Loaded at Tc, where a(T) of models 7 and 8 is a itself.
    const SlotTable table = loaded(arguments.data(), gas, tc > 0.0 ? tc : 300.0, n, mu);
    return printed(calcnum::temperature(table, SLOT, v, p));
}

std::string saturation_command(Arguments& arguments) {
    const Choice gas = choice(arguments);
    const double t = arguments.temperature();
    SlotTable table = loaded(arguments.data(), gas, t, 1.0, arguments.mu());
    double vl = 0.0, vg = 0.0;
    const double pv = calcnum::vapour_pressure(table, SLOT, t, vl, vg);
    if (pv == -1.0)
        return "-1";
    const auto reload = [&arguments](EquationSlot& slot) { Global::load_slot(arguments.data(), slot, false); };
    const double enthalpy = calcnum::vaporisation_enthalpy(table, t, vl, vg, reload);
    return (Row() << pv << vl << vg << enthalpy).text();
}

std::string isotherm_command(Arguments& arguments) {
    constexpr int STEPS = 100;
    const Choice gas = choice(arguments);
    const double t = arguments.temperature(), n = arguments.number("N");
    const double from = arguments.number("VMIN"), to = arguments.number("VMAX");
    if (!(from < to))
        throw InvalidArgument("VMIN " + to_text(from) + " is not below VMAX " + to_text(to));
    const SlotTable table = loaded(arguments.data(), gas, t, n, arguments.mu());
    std::string text;
    for (int i = 0; i <= STEPS; ++i) {
        const double v = i == STEPS ? to : from + (to - from) * i / STEPS;
        if (i > 0)
            text += arguments.between_rows();
        text += (Row() << v << pressure(table, SLOT, v)).text();
    }
    return text;
}

std::string gas_command(Arguments& arguments) {
    const Choice gas = choice(arguments);
    const double t = arguments.temperature();
    const SlotTable table = loaded(arguments.data(), gas, t, 1.0, arguments.mu());
    const GasRecord& g = table[SLOT].gas;
    return (Row() << g.name << g.a << g.b << g.c << g.d << g.pm << g.tc << g.pc << g.vc << g.zc << g.teb << g.hv)
        .text();
}

std::string roots_command(Arguments& arguments) {
    const double a2 = arguments.number("A2"), a1 = arguments.number("A1"), a0 = arguments.number("A0");
    const auto [x1, x2, x3] = calcnum::cubic_roots(a2, a1, a0);
    return (Row() << x1 << x2 << x3).text();
}

using Conversion = double (*)(double, std::string_view, std::string_view);
constexpr std::array<std::pair<std::string_view, Conversion>, 5> CONVERSIONS{{
    {"energia", Global::convertirenergia},
    {"densidad", Global::convertirdensidad},
    {"presion", Global::convertirpresion},
    {"temperatura", Global::convertirtemperatura},
    {"volumen", Global::convertirvolumen},
}};

/// Labels that are not of the family give 0, as everywhere in the program.
std::string convert_command(Arguments& arguments) {
    const std::string family = arguments.text();
    const double value = arguments.number("VALUE");
    const std::string from = arguments.text(), to = arguments.text();
    if (family == "cantidad") {
        if (arguments.empty())
            throw InvalidArgument("cantidad needs the gas number as its last argument");
        const Choice gas{arguments.gas(), EquationOfState::IdealGas};
        if (from == to)  // needs no molar mass
            return printed(value);
        return printed(Global::convertircantidad(value, from, to, loaded(arguments.data(), gas, 300.0, 1.0, 1.5)));
    }
    const auto known = std::find_if(CONVERSIONS.begin(), CONVERSIONS.end(),
                                    [&family](const auto& conversion) { return conversion.first == family; });
    if (known == CONVERSIONS.end())
        throw InvalidArgument("no family " + family +
                              "; there are energia, cantidad, densidad, presion, temperatura, volumen");
    if (!arguments.empty())
        throw InvalidArgument("only cantidad takes a gas number");
    return printed(known->second(value, from, to));
}

struct Command {
    std::string_view name;
    std::string_view arguments;
    std::string_view prints;
    std::size_t least, most;  // number of arguments
    std::string (*run)(Arguments&);
};

constexpr std::array<Command, 8> COMMANDS{{
    {"pressure", "GAS MODEL T N V [MU]", "P; 0 for a forbidden state", 5, 6, pressure_command},
    {"volume", "GAS MODEL T P N [MU]", "V, by Newton's method from the ideal gas", 5, 6, volume_command},
    {"temperature", "GAS MODEL V P N [MU]", "T", 5, 6, temperature_command},
    {"saturation", "GAS MODEL T [MU]", "Pv, vl, vg, enthalpy of vaporisation; -1 without", 3, 4, saturation_command},
    {"isotherm", "GAS MODEL T N VMIN VMAX [MU]", "V and P at 101 volumes", 6, 7, isotherm_command},
    {"gas", "GAS MODEL T [MU]", "name, four coefficients, pm, tc, pc, vc, zc, teb, hv", 3, 4, gas_command},
    {"roots", "A2 A1 A0", "x1, x2, x3 of x^3 + A2 x^2 + A1 x + A0", 3, 3, roots_command},
    {"convert", "FAMILY VALUE FROM TO [GAS]", "the value in the unit TO; 0 for an unknown unit", 4, 5, convert_command},
}};

std::string run(Calculator& calculator, std::span<const std::string> words, char between_rows) {
    if (words.empty())
        throw InvalidArgument("no command");
    const auto command =
        std::find_if(COMMANDS.begin(), COMMANDS.end(), [&words](const Command& c) { return c.name == words.front(); });
    if (command == COMMANDS.end())
        throw InvalidArgument("no command " + words.front());
    const auto given = words.subspan(1);
    if (given.size() < command->least || given.size() > command->most)
        throw InvalidArgument("the command is " + std::string(command->name) + " " + std::string(command->arguments));
    Arguments arguments(calculator, given, between_rows);
    return command->run(arguments);
}

}  // namespace

Answer failure(std::string_view sentence) {
    return {"error: " + without_controls(sentence), true};
}

std::optional<std::vector<std::string>> split(std::string_view line) {
    std::vector<std::string> words;
    bool quoted = false, inside = false;
    for (const char c : line) {
        const bool blank = c == ' ' || c == '\t' || c == '\r';
        if (blank && !quoted) {
            inside = false;
            continue;
        }
        if (!inside)
            words.emplace_back();
        inside = true;
        if (c == '"')
            quoted = !quoted;
        else
            words.back() += c;
    }
    if (quoted)
        return std::nullopt;
    return words;
}

const confreg::Text& Calculator::data() {
    if (!data_) {
        confreg::recover({folder_ / "idioma.lng", folder_ / "data"}, {folder_});
        data_ = confreg::read(folder_ / "data");
    }
    return *data_;
}

Answer Calculator::answer(std::span<const std::string> words, char between_rows) {
    try {
        return {run(*this, words, between_rows), false};
    } catch (const std::exception& error) {
        return failure(error.what());
    }
}

Answer Calculator::answer(std::string_view line) {
    const auto words = split(line);
    if (!words)
        return failure("a quote is left open");
    return answer(*words, '\t');
}

std::string help() {
    std::string text =
        "usage: tavo-calc [--home DIR] COMMAND ARGUMENT...\n"
        "       tavo-calc [--home DIR] batch < COMMANDS\n"
        "       tavo-calc --help | --version\n"
        "\n"
        "Real gases on the command line, in mol, K, l and atm. Numbers are printed with 17\n"
        "significant digits, separated by tabs. A command that fails prints \"error: SENTENCE\"\n"
        "instead; the exit status is then 1.\n"
        "\n"
        "batch reads one command per line and answers each line, a blank one too, with one line,\n"
        "at once. A word with blanks stands in double quotes.\n"
        "\n";
    for (const Command& command : COMMANDS) {
        std::string head = "  " + std::string(command.name) + " " + std::string(command.arguments);
        head.resize(std::max<std::size_t>(head.size() + 1, 41), ' ');
        text += head + std::string(command.prints) + "\n";
    }
    text +=
        "\n"
        "  GAS     number of the gas in the database\n"
        "  MODEL  ";
    for (const Model& model : models()) {
        const bool new_line = model.number == EquationOfState::Virial;
        text += (new_line ? "\n         " : " ") + std::to_string(static_cast<int>(model.number)) + " " +
                std::string(model.name) + ",";
    }
    text.pop_back();
    text +=
        "\n"
        "  MU      exponent of model 6, 1.5 where it is not given; one stored with the gas wins\n"
        "  FAMILY  energia, cantidad (which needs GAS), densidad, presion, temperatura, volumen\n"
        "\n"
        "The database is DIR/data; without --home that of the folder named by TAVO_GAS_HOME,\n"
        "else that of the program's folder.\n";
    return text;
}

}  // namespace tavo::calc
