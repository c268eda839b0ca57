#pragma once
// Everything that core refuses, as one small hierarchy. what() is one sentence in lower case, without a
// final full stop, that names the file, key, gas number or state concerned.

#include <stdexcept>
#include <string>

namespace tavo {

class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file that has to be there is missing.
class FileNotFound : public Error {
public:
    using Error::Error;
};

/// A value or a text that the operation cannot take (a line without "=", a line break inside a value, mu <= 1).
class InvalidArgument : public Error {
public:
    using Error::Error;
};

/// A 16-bit count or line number that does not fit; a section header shorter than two characters.
class Overflow : public Error {
public:
    using Error::Error;
};

/// A slot number outside 0..5.
class SubscriptOutOfRange : public Error {
public:
    using Error::Error;
};

/// A formula divided by zero, overflowed or gave no finite number; an iteration that provably never ends.
class FloatingPointError : public Error {
public:
    using Error::Error;
};

/// A settings file that could not be rewritten (another rewrite under way, disk full, read-only folder,
/// a character outside the file's encoding). The file still holds its old text.
class RewriteRefused : public Error {
public:
    using Error::Error;
};

}  // namespace tavo
