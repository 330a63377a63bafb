#pragma once

// Messages as translators' tools hold them, whichever file they came in:
// Qt's .ts (XML) and gettext's .po. Both formats read into and write from
// these, so exporting, importing and the Qt-application import share one
// model.

#include "vxtranslationtable.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace Vexil::Interchange {

struct TvxMessage
{
    QString context;     ///< "Form/Category" for the suite's own files; a class name for Qt's
    QString comment;     ///< the entry's key in the suite's own files (the disambiguation)
    QString source;      ///< language 1's text
    QString translation; ///< the target language's text
    bool finished = true; ///< false: marked unfinished (.ts) or fuzzy (.po)
    bool obsolete = false; ///< kept by the tool only for history
    int line = 0;        ///< where the message starts in its file, for messages
};

struct TvxMessageFile
{
    QString language;       ///< the target language's code, empty when unknown
    QString sourceLanguage; ///< language 1's code, empty when unknown
    QList<TvxMessage> messages;
};

/// The context of one form and category: "TForm1/Captions".
QString messageContext(const QString &form, TStringsType category);
/// Splits a context made by messageContext(); false for any other.
bool splitMessageContext(const QString &context, QString *form, TStringsType *category);

/// The messages of one target language: every entry of the chosen forms
/// (all when @p forms is empty) and categories whose language-1 text is
/// not empty, one context per form and category, in file order grouped by
/// context. @p skipped counts entries left out for an empty source.
TvxMessageFile exportMessages(const TvxTranslationTable &table, int language, const QStringList &forms,
                              const QList<TStringsType> &categories, int *skipped = nullptr);

/// Reads @p fileName and parses it with @p parse (a format's fromBytes);
/// false with a message naming the file when it is missing, unreadable or
/// damaged.
bool readMessageFile(const QString &fileName, TvxMessageFile *file, QString *error,
                     bool (*parse)(const QByteArray &, TvxMessageFile *, QString *));
/// Writes @p bytes to @p fileName through a safe save; false with a
/// message naming the file when it cannot be written.
bool writeMessageFile(const QByteArray &bytes, const QString &fileName, QString *error);

} // namespace Vexil::Interchange
