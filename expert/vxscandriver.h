#pragma once

// The expert's scan-and-replace run and its two maintenance commands on the
// project folder's files, with plain inputs and callbacks for everything a
// window would do (review, adding strings to the form, messages, progress).
// The windows call these; the tests call them on real files without any.

#include "vxsourcescan.h"
#include "vxunitfile.h"

#include <functional>

namespace Vexil::Expert {

enum class TvxMessageKind { Information, Warning, Error };

/// What a scan works on.
struct TvxScanInput
{
    QString formName;      ///< the form's object name (Form1)
    QString formClassName; ///< the form's class (Form1, from the .ui's <class>)
    QString componentName; ///< its translation component (Vexil1)
    QStringList strings;   ///< the component's Strings table now
    QChar delimiter = QLatin1Char('\t');
    QString unitPath;      ///< the unit scanned and rewritten
    QString headerPath;    ///< the form's .h (const-section methods)
    QString formSourcePath; ///< the form's .cpp; empty: the unit when it is the form's own
    bool constSection = false;
    bool formsOwnUnit = true;
};

struct TvxScanCallbacks
{
    /// Shows the review; the rows are edited in place. True for OK.
    std::function<bool(TvxFoundList &)> review;
    /// Adds (identifier, text) pairs to the component's Strings table;
    /// texts come delimiter-escaped. False: nothing was added.
    std::function<bool(const TvxStringEntries &)> addStrings;
    std::function<void(TvxMessageKind, const QString &)> message;
    /// "Scanning...", "Modifying source...", or empty to hide.
    std::function<void(const QString &)> progress;
};

enum class TvxScanOutcome {
    Empty,        ///< the unit is empty: nothing said, nothing done
    NothingFound, ///< no literal (or constant)
    Cancelled,    ///< the review was not closed with OK
    Done,
    Failed        ///< a file could not be read or written; told through message
};

/// DoScanReplace: read the unit, scan, review, then add the strings and
/// rewrite the unit. Nothing is written before the review's OK; a unit that
/// changed on disk meanwhile, or is read-only, is refused before anything
/// is added or written. In const-section mode the form's three methods are
/// made sure first (ensureFormMethods).
TvxScanOutcome doScanReplace(const TvxScanInput &input, const TvxScanCallbacks &callbacks);

/// Makes sure the form's class declares and defines the language slot and
/// UpdateStrings() (the constructor is there already). False with a message
/// when a file could not be read or written.
bool ensureFormMethods(const TvxScanInput &input, const std::function<void(TvxMessageKind, const QString &)> &message);

/// The identifiers of @p strings that @p unitPath no longer fetches. False
/// (@p error set) when the unit cannot be read.
bool checkUnusedIds(const QString &unitPath, const QStringList &strings, QChar delimiter, QStringList *unused,
                    QString *error);

/// Changes the class of the form's translation component in the .ui file
/// and in the declarations of the form's .h and .cpp (files that do not
/// exist are skipped). Every file is read and checked before the first is
/// written. False (@p error set) when nothing could be changed.
bool changeComponentType(const QString &uiPath, const QStringList &sourcePaths, const QString &componentName,
                         const QString &newClass, QString *error);

/// Writes the Strings table of component @p componentName into the .ui
/// file (the form is not open anywhere that would write it back).
bool writeUiStrings(const QString &uiPath, const QString &componentName, const QStringList &strings, QString *error);
/// The Strings table as the .ui file holds it.
bool readUiStrings(const QString &uiPath, const QString &componentName, QStringList *strings, QString *error);

namespace Msg {
inline QString formNotTranslated() { return QStringLiteral("Form %1 is not translated!"); }
inline QString allIdsUsed() { return QStringLiteral("All IDs on form %1 are used."); }
inline QString fileShouldBeClosed()
{
    return QStringLiteral("For changing component type file should be closed!\r\nAction aborted.");
}
inline QString noFormsWithVexil()
{
    return QStringLiteral("No forms found with TVexil! Double click on form for insert TVexil.");
}
inline QString scanning() { return QStringLiteral("Scanning..."); }
inline QString modifying() { return QStringLiteral("Modifying source..."); }
} // namespace Msg

} // namespace Vexil::Expert
