// SPDX-License-Identifier: MIT
#pragma once

#include "export/wizard/ExportControls.h"

namespace vellumo {

class Defaults;

// The options that the user last exported in a format with, among the settings. What says which tables and where to is
// none of them.
void rememberOptions(const ExportControls& controls, const FormatInfo& format, Defaults& defaults);
// Puts them into the controls that the format shows; what was never remembered, or is no choice any more, stays.
void recallOptions(const Defaults& defaults, const FormatInfo& format, ExportControls& controls);

} // namespace vellumo
