#include "controller/metatypes.h"

void registerMetaTypes()
{
    qRegisterMetaType<FootswitchType>();
    qRegisterMetaType<LoopType>();
    qRegisterMetaType<SwitchType>();
    qRegisterMetaType<WahPadAction>();
    qRegisterMetaType<WahPadSetting>();
    qRegisterMetaType<ClickProtection>();
    qRegisterMetaType<KeyboardType>();
    qRegisterMetaType<BankPresetChangeMode>();
    qRegisterMetaType<PresetChangeName>();
    qRegisterMetaType<MidiInPCFunction>();
    qRegisterMetaType<MidiInCCFunction>();
    qRegisterMetaType<ExpressionPedalPeriod>();
    qRegisterMetaType<ExpressionPedalCharacteristic>();
    qRegisterMetaType<SwitchOutSetting>();
    qRegisterMetaType<MidiDeviceTapTempo>();
    qRegisterMetaType<TapTempoNote>();
    qRegisterMetaType<PresetExpressionPedal>();
    qRegisterMetaType<TransferReport>();
    qRegisterMetaType<RecordChange>();
    qRegisterMetaType<StepReport>();
    qRegisterMetaType<ArrangementReport>();
    qRegisterMetaType<QVector<ControlChangeData>>();
    qRegisterMetaType<QVector<QString>>();
    qRegisterMetaType<QVector<int>>();
}
