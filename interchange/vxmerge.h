#pragma once

// One translation file merged into another, the way a component merges a
// file into its tables: whole entries, the file merged in wins every
// entry both hold, the other file keeps what the merged one lacks.

#include "vxtranslationtable.h"

namespace Vexil::Interchange {

struct TvxMergeReport
{
    int added = 0;
    int replaced = 0;
    int unchanged = 0;
};

/// Merges every entry of @p from into @p into (re-encoded for @p into's
/// delimiter), and the language names @p into lacks.
TvxMergeReport mergeTables(TvxTranslationTable &into, const TvxTranslationTable &from, const Progress &progress = {});

} // namespace Vexil::Interchange
