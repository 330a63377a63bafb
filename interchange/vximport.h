#pragma once

// Bringing translators' work back into a translation file: messages of the
// suite's own export found by their key, and messages of an existing Qt
// application found by form and source text. Only the texts of the target
// language change; a message that finds no entry is reported, never added.

#include "vxmessages.h"

namespace Vexil::Interchange {

struct TvxImportReport
{
    int updated = 0;    ///< entries whose text changed
    int unchanged = 0;  ///< entries that had that text already
    int unfinished = 0; ///< messages marked unfinished or fuzzy, or without translation: left out
    int obsolete = 0;   ///< messages the tool keeps for history: left out
    /// One line per message that found no entry ("line 12: TForm1/Captions TForm1.Button9.Caption").
    QStringList unmatched;
    /// Messages whose source is no longer language 1's text: left out.
    QStringList sourceChanged;
    /// Translations holding a character a translation file cannot hold
    /// (NUL, or the control characters 25, 26 and 28 it uses itself): left out.
    QStringList unstorable;
};

/// The target language of a translators' file: @p requested when given (a
/// number or a language name or code), else the file's language code
/// matched against the file's language names, else a "_N" at the end of
/// the file's base name, else language 2 when the file has exactly two.
/// With @p allowNew a code that names no language of the file gives a new
/// language after the last one. -1 with a message in @p error when none fits.
int targetLanguage(const TvxTranslationTable &table, const QString &requested, const QString &fileLanguage,
                   const QString &fileName, bool allowNew, QString *error);

/// Messages written by exportMessages() (directly or after a round through
/// translators' tools): found by context "Form/Category" and key.
TvxImportReport importMessages(TvxTranslationTable &table, const TvxMessageFile &file, int language,
                               const Progress &progress = {});

/// Messages of a Qt application's own .ts files: the context is the form's
/// class, the source is language 1's text. Every entry of that form whose
/// language-1 text equals the source gets the translation.
TvxImportReport importQtMessages(TvxTranslationTable &table, const TvxMessageFile &file, int language,
                                 const Progress &progress = {});

} // namespace Vexil::Interchange
