#pragma once
// What the words after tavo-gas ask for.

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

/// Colours of the program: as the desktop has them, or fixed, for a projector for instance.
enum class Paleta { Desktop, Light, Dark };

struct CommandLine {
    /// Something to print instead of starting, and the exit status that goes with it.
    struct Answer {
        QString text;
        int status;
    };
    /// A plot to draw into a file instead of opening windows: the words as they stand.
    struct Plot {
        QString file;
        QStringList rows;
        std::optional<QString> range, size;
    };
    std::optional<Answer> answer;
    std::optional<Plot> plot;
    std::optional<QString> home;
    bool splash = true;
    Paleta paleta = Paleta::Desktop;
};

/// The words include the program's name. Needs no application object, except that --help asks for one's name.
CommandLine parse_command_line(const QStringList& words);
