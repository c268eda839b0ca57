#pragma once
// How widgets that know nothing of the program's state get their texts.

#include <QString>

#include <functional>

/// Text of a number of the language table, and the literal to fall back on.
using Texto = std::function<QString(int number, const QString& literal)>;
