#pragma once

#include "controller/transferreport.h"
#include "model/records.h"

#include <QMetaType>
#include <QVector>

// The types that travel between the threads as signal arguments.
Q_DECLARE_METATYPE(FootswitchType)
Q_DECLARE_METATYPE(LoopType)
Q_DECLARE_METATYPE(SwitchType)
Q_DECLARE_METATYPE(WahPadAction)
Q_DECLARE_METATYPE(WahPadSetting)
Q_DECLARE_METATYPE(ClickProtection)
Q_DECLARE_METATYPE(KeyboardType)
Q_DECLARE_METATYPE(BankPresetChangeMode)
Q_DECLARE_METATYPE(PresetChangeName)
Q_DECLARE_METATYPE(MidiInPCFunction)
Q_DECLARE_METATYPE(MidiInCCFunction)
Q_DECLARE_METATYPE(ExpressionPedalPeriod)
Q_DECLARE_METATYPE(ExpressionPedalCharacteristic)
Q_DECLARE_METATYPE(SwitchOutSetting)
Q_DECLARE_METATYPE(MidiDeviceTapTempo)
Q_DECLARE_METATYPE(TapTempoNote)
Q_DECLARE_METATYPE(ControlChangeData)
Q_DECLARE_METATYPE(PresetExpressionPedal)
Q_DECLARE_METATYPE(TransferReport)
Q_DECLARE_METATYPE(RecordChange)
Q_DECLARE_METATYPE(StepReport)
Q_DECLARE_METATYPE(ArrangementReport)

/// Registers them, so that queued connections can carry them. Every controller does it before anything is connected.
void registerMetaTypes();
