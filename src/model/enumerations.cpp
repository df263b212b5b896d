#include "model/enumerations.h"

// The two shortest period labels end in a blank, so that all five are seven characters long.
#define KORA_LABELS(Enum, ...)                                                                                         \
    template <>                                                                                                        \
    const QStringList &labels<Enum>()                                                                                  \
    {                                                                                                                  \
        static const QStringList texts{__VA_ARGS__};                                                                   \
        return texts;                                                                                                  \
    }

KORA_LABELS(FootswitchType, "P - PRESET", "S - SWITCH MODIFIER", "L - LOOP MODIFIER", "M - MIDI MODIFIER")
KORA_LABELS(LoopType, "ON", "OFF", "TOGGLE", "INACTIVE")
KORA_LABELS(SwitchType, "ON", "OFF", "TOGGLE", "INACTIVE")
KORA_LABELS(WahPadAction, "ADD", "TURN LOOP ON", "CHANGE TO PRESET")
KORA_LABELS(WahPadSetting, "LOOP 1", "LOOP 2", "LOOP 3", "LOOP 4", "LOOP 5", "LOOP 6", "INACTIVE")
KORA_LABELS(ClickProtection, "LOW", "MID", "HIGH")
KORA_LABELS(KeyboardType, "QWERTY", "AZERTY")
KORA_LABELS(BankPresetChangeMode, "DIRECT", "INDIRECT")
KORA_LABELS(PresetChangeName, "ALWAYS", "PRESET ONLY")
KORA_LABELS(MidiInPCFunction, "UNUSED", "BANK 1-10", "BANK + PRESET")
KORA_LABELS(MidiInCCFunction, "UNUSED", "NUMBER-BANK, VALUE-PRESET")
KORA_LABELS(ExpressionPedalPeriod, "4 [ms] ", "8 [ms] ", "16 [ms]", "32 [ms]", "64 [ms]")
KORA_LABELS(ExpressionPedalCharacteristic, "FAST/SLOW", "LINEAR", "SLOW/FAST")
KORA_LABELS(SwitchOutSetting, "LATCHING", "PULSE", "MOMENTARY")
KORA_LABELS(MidiDeviceTapTempo, "UNUSED", "TAP CTRL", "TAP TEMPO NOTE")
KORA_LABELS(TapTempoNote, "ON", "OFF", "TOGGLE")
KORA_LABELS(bool, "NO", "YES")
