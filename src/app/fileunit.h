#pragma once

#include "ui/shell/workfile.h"

/// A virtual unit with this content, as the editor needs it to work on a file.
std::unique_ptr<InnerUnit> makeFileUnit(const UnitContent &content, std::function<void()> changed);
