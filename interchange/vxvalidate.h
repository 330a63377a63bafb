#pragma once

// The checks a build runs on a translation file before shipping it.
// Errors break the file for the components that load it; warnings are
// translations that probably show wrong.

#include "vxtranslationtable.h"

namespace Vexil::Interchange {

struct TvxIssue
{
    enum Severity { Warning, Error };
    Severity severity = Warning;
    TStringsType category = stCaptions;
    QString key;
    int language = 0; ///< 0 when the issue is about the whole entry
    QString message;
};

/// Every issue of the file, in entry order:
/// - error: an entry with more or fewer texts than the file has languages
///   (a delimiter typed into a text, or a language lost);
/// - error: a text holding @p tableDelimiter (the components' own
///   delimiter, a tab unless they were given another), which would split
///   the text into two languages once loaded;
/// - warning: a text holding the file's delimiter (stored escaped; tools
///   that do not know the escape show a control character there);
/// - warning: a value of one text without any delimiter (given to the
///   first two languages when loaded);
/// - warning: placeholders %1..%9, the "&" accelerator or the closing
///   punctuation differing from language 1's text, as the grid editor marks them.
QList<TvxIssue> validate(const TvxTranslationTable &table, QChar tableDelimiter = QChar(9));

} // namespace Vexil::Interchange
