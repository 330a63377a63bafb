#pragma once

#include "vexil_export.h"
#include "vxtypes.h"

#include <QtCore/QString>

#include <functional>

class TvxGridModel;

/// Saves the category a grid editor shows into a translation file and loads
/// it back, working on the grid's cells rather than on a component's table.
/// The file is the one translation components save and load: other forms'
/// entries and other categories are kept, and it is replaced in one step.
class VEXIL_EXPORT TvxCategoryFile
{
public:
    enum Answer { Yes, No, Cancel };

    /// Who the grid's lines belong to and which table they are.
    struct Target
    {
        QString ownerName;   ///< the form's object name (older files key by it)
        QString filePrefix;  ///< the key prefix files use for the form (its class name)
        TStringsType kind = stCaptions;
        QString categoryName; ///< as the editor names it ("Captions", a property name ...)
    };

    /// The file section of a category, or an empty string for none.
    static QString section(TStringsType kind, const QString &categoryName);

    /// Writes the grid's rows into the category's section of @p fileName with
    /// @p fileDelim after every language's text, together with the delimiter
    /// and the column headers as language names. Entries of the same form
    /// keyed by its object name are removed from that section. Blank rows
    /// are not written. Throws EVexilError when the file cannot be read or
    /// written, @p fileDelim is reserved by the format (CR, LF, 25, 26, 28),
    /// a key or text would not read back as it is, or two rows' keys differ
    /// only in letter case; the file is then as it was.
    static void save(const TvxGridModel &grid, const Target &target, const QString &fileName, QChar fileDelim);

    /// Replaces the grid's rows by the form's entries of the category in
    /// @p fileName. Column headers take the file's language names;
    /// @p fileDelim becomes the delimiter the file names. @p askOverwrite is
    /// asked for a key met twice: Yes overwrites the row, No skips the entry,
    /// Cancel ends the load there (rows handled so far keep their texts).
    /// Throws EVexilError "There are no information for this property in
    /// selected file!" when the file has no entry of the form in that
    /// section (the grid is unchanged), or when the file cannot be read.
    /// Any other failure part-way (a text holding the grid's delimiter, an
    /// exception from @p askOverwrite) puts the rows, headers and
    /// @p fileDelim back as they were before it is passed on.
    static void load(TvxGridModel &grid, const Target &target, const QString &fileName, QChar &fileDelim,
                     const std::function<Answer(const QString &key)> &askOverwrite);
};
