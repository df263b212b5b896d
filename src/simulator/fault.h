#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// Something that goes wrong in one exchange. Silence, an error status and an endless stream come in place of the
/// command; with every other fault the command has been carried out and only its answer is spoiled.
struct Fault
{
    enum class Kind {
        None,
        Silence,        ///< no answer
        LateAnswer,     ///< the answer after `delay`
        SlowBytes,      ///< a pause of `delay` after each byte of the answer
        Noise,          ///< bytes before the answer's STX, among them FS and 0xFF
        WrongChecksum,  ///< the last checksum digit changed
        CutOff,         ///< the first half of the answer
        ZeroByte,       ///< a byte 0x00 in the middle of the answer
        ErrorStatus,    ///< `status`, whose description becomes `text`
        EndlessStream,  ///< bytes without an STX until the next command arrives or the unit is unplugged
        HangUp,         ///< the first half of the answer, then the unit is unplugged
    };

    using Milliseconds = std::chrono::milliseconds;

    static Fault silence() { return {Kind::Silence, 0, {}, {}}; }
    static Fault lateAnswer(Milliseconds delay = Milliseconds(2500)) { return {Kind::LateAnswer, 0, delay, {}}; }
    static Fault slowBytes(Milliseconds delay = Milliseconds(20)) { return {Kind::SlowBytes, 0, delay, {}}; }
    static Fault noise() { return {Kind::Noise, 0, {}, {}}; }
    static Fault wrongChecksum() { return {Kind::WrongChecksum, 0, {}, {}}; }
    static Fault cutOff() { return {Kind::CutOff, 0, {}, {}}; }
    static Fault zeroByte() { return {Kind::ZeroByte, 0, {}, {}}; }
    static Fault errorStatus(int status = 99, std::string text = "Internal error")
    {
        return {Kind::ErrorStatus, status, {}, std::move(text)};
    }
    static Fault endlessStream() { return {Kind::EndlessStream, 0, {}, {}}; }
    static Fault hangUp() { return {Kind::HangUp, 0, {}, {}}; }

    /// The fault that the command line calls `name` ("silence", "late", ...), with its default details.
    static std::optional<Fault> named(std::string_view name);
    /// All names that `named` knows, for a help text.
    static std::string names();

    /// Whether the unit carries out the command of a spoiled exchange.
    bool carriesOut() const;

    Kind kind = Kind::None;
    int status = 0;
    Milliseconds delay{};
    std::string text;
};
