#pragma once

/// What a unit makes of the control changes that "WBP" brings. Nobody knows yet which one hardware does.
enum class MidiLists {
    Replace,  ///< they take the place of the preset's list
    Merge,    ///< each one replaces, adds or (with the inactive value) drops its device's controller
};
