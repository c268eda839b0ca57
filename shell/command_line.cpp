#include "shell/command_line.h"

#include <QCommandLineOption>
#include <QCoreApplication>

#include "tavo_version.h"

CommandLine parse_command_line(const QStringList& words) {
    const QCommandLineOption help({"h", "help"}, "Show these options and leave.");
    const QCommandLineOption version("version", "Show the version and leave.");
    const QCommandLineOption home("home", "Read and write the program's files in this folder.", "DIR");
    const QCommandLineOption no_splash("no-splash", "Start without the splash.");
    const QCommandLineOption light("light", "Use light colours.");
    const QCommandLineOption dark("dark", "Use dark colours.");
    const QCommandLineOption plot("plot", "Draw isotherms into a .png, .svg or .pdf file and leave.", "FILE");
    const QCommandLineOption row("row", "An isotherm of the plot, up to five times: K, mol.", "GAS;MODEL;T;N");
    const QCommandLineOption range("range", "Volumes (l) and pressures (atm) of the plot.", "VMIN,VMAX[,PMIN,PMAX]");
    const QCommandLineOption size("size", "Size of the plot in pixels; 1200x800 without it.", "WxH");
    QCommandLineParser parser;
    parser.setApplicationDescription("Real gases made visible: isotherms, equations of state, phase equilibrium.");
    parser.addOptions({help, version, home, no_splash, light, dark, plot, row, range, size});

    CommandLine result;
    const bool understood = parser.parse(words);
    if (understood && parser.isSet(help)) {
        result.answer = {QCoreApplication::instance() ? parser.helpText() : QString(), 0};
    } else if (understood && parser.isSet(version)) {
        result.answer = {QStringLiteral("tavo-gas %1\n").arg(QStringLiteral(TAVO_VERSION)), 0};
    } else if (!understood) {
        result.answer = {QStringLiteral("tavo-gas: %1\n").arg(parser.errorText()), 1};
    } else if (!parser.positionalArguments().isEmpty()) {
        const QString word = parser.positionalArguments().constFirst();
        result.answer = {QStringLiteral("tavo-gas: unexpected word \"%1\"\n").arg(word), 1};
    } else if (!parser.isSet(plot) && (parser.isSet(row) || parser.isSet(range) || parser.isSet(size))) {
        result.answer = {QStringLiteral("tavo-gas: --row, --range and --size belong to --plot\n"), 1};
    }
    const auto optional_value = [&parser](const QCommandLineOption& option) {
        return parser.isSet(option) ? std::optional(parser.value(option)) : std::nullopt;
    };
    if (parser.isSet(plot))
        result.plot = {parser.value(plot), parser.values(row), optional_value(range), optional_value(size)};
    if (parser.isSet(home))
        result.home = parser.value(home);
    result.splash = !parser.isSet(no_splash);
    result.paleta = parser.isSet(dark) ? Paleta::Dark : parser.isSet(light) ? Paleta::Light : Paleta::Desktop;
    return result;
}
