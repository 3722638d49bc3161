#pragma once
// The one run-time error of the program: the old runtime's error number and its words, as a user
// saw them ("Err number : 9     Subscript out of range"). Routines that fail in the middle of a
// statement throw it; the handler of the operation shows it, stores it in the error store, or turns
// it into the message of its own command.
//
// The words of the runtime's trappable errors that the program raises are kept in one table
// (runtimeWords). A RuntimeError made with a number alone takes its words from there; one made with
// words of its own (a file name, an engine's description) keeps them.

#include <QString>
#include <exception>
#include <string>

namespace vesk {

// The runtime's numbers that the program raises itself.
namespace runtime_error {
inline constexpr int kInvalidProcedureCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kBadFileNameOrNumber = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kDiskFull = 61;
inline constexpr int kInputPastEnd = 62;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kInvalidUseOfNull = 94;
// A modeless form shown while a modal one is up; the frame handles it without words.
inline constexpr int kModelessOverModal = 401;
} // namespace runtime_error

// The runtime's words for `number` ("Subscript out of range" for 9); "Application-defined or
// object-defined error" for a number the table does not hold, as the runtime said for its own.
QString runtimeWords(int number);

class RuntimeError : public std::exception {
public:
    // The error `number` with the runtime's words for it.
    explicit RuntimeError(int number);
    RuntimeError(int number, QString words);

    int number = 0;
    QString words;

    const char* what() const noexcept override { return what_.c_str(); }

private:
    std::string what_;
};

} // namespace vesk
