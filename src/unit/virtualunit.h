#pragma once

#include "unit/commandframe.h"
#include "unit/firmwareupload.h"
#include "unit/midilists.h"
#include "unit/unitmemory.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

class FieldDecoder;

/// A unit without hardware: takes one command frame, answers with one response frame, and keeps what was written. It
/// is as strict as the protocol allows. A command that does not get status 0 has changed nothing.
class VirtualUnit
{
public:
    /// `restartTime` is how long the unit is silent after it accepted a restart.
    explicit VirtualUnit(UnitMemory memory, std::chrono::milliseconds restartTime = std::chrono::milliseconds(500));

    /// The response to the bytes of one frame, STX to ETX; nothing while the unit restarts. The response carries the
    /// frame identifier of the command, or 0 when the command's cannot be read. A command with the identifier of the
    /// last one is refused, since nothing is repeated on the line.
    std::optional<std::string> answer(std::string_view frame);

    /// Notes the identifier of a frame that gets no answer from `answer`.
    void overhear(const ReceivedFrame &frame) { isRepeated(frame); }

    /// Carries out a command and appends the fields of its answer (empty for a write). Reads answer with their
    /// address fields first. A write needs at least one value, except "WSO", which changes nothing without one.
    UnitStatus execute(const Command &command, std::string &answerFields);

    /// Whether the unit is restarting.
    bool isSilent() const;

    /// What the unit makes of control changes from now on; `Replace` until then.
    void setMidiLists(MidiLists mode) { midiLists = mode; }

    /// Replaces the text that "RET" answers for a status number.
    void setErrorText(int status, std::string text);

    const UnitMemory &memory() const { return stored; }
    UnitMemory &memory() { return stored; }

private:
    struct Exchange;
    struct Row;

    bool isRepeated(const ReceivedFrame &frame);
    void describeError(Exchange &exchange) const;
    void writePreset(Exchange &exchange);
    void writeFirmware(FieldDecoder &request);
    UnitStatus install();

    UnitMemory stored;
    FirmwareUpload upload;
    MidiLists midiLists = MidiLists::Replace;
    std::string lastIdentifier;  ///< of the last well-formed frame
    std::map<int, std::string> errorTexts;
    std::chrono::milliseconds restartDuration;
    std::chrono::steady_clock::time_point silentUntil;
};
