#pragma once

#include "vexil_export.h"

#include <QtCore/QStringList>

class TvxDictionaryClient;
class TvxGridModel;

/// What the grid editor's dictionary commands do with the grid's cells.
/// Languages are named to the dictionary by the column headers. An error of
/// the dictionary stops a command where it is: what was written stays.
namespace TvxDictionaryCommands {

/// Whether a header is still a default "Language N" one (letter case aside).
VEXIL_EXPORT bool hasUnnamedLanguage(const QStringList &headers);

/// Adds the texts of @p row, pair by pair of neighbouring languages.
VEXIL_EXPORT void addRow(const TvxGridModel &grid, int row, TvxDictionaryClient &dictionary);
/// Adds every row's pairs of neighbouring languages whose two texts are set.
VEXIL_EXPORT void addAll(const TvxGridModel &grid, TvxDictionaryClient &dictionary);
/// Looks the cell's translation up from the row's other languages, left to
/// right; the first answer is written into the cell. True when one was found.
VEXIL_EXPORT bool find(TvxGridModel &grid, int row, int column, TvxDictionaryClient &dictionary);
/// Translates every cell that the dictionary has an answer for, language by
/// language; a cell with an answer is overwritten, one without keeps its text.
/// Returns the number of cells written.
VEXIL_EXPORT int autoTranslate(TvxGridModel &grid, TvxDictionaryClient &dictionary);

} // namespace TvxDictionaryCommands
