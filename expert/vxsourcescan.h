#pragma once

// The expert's source scan: finds the string literals of a C++ unit (or the
// string constants before its first function body), keeps the review list
// the developer edits, and rewrites the unit so that every kept literal is
// fetched by identifier from the form's translation component.
//
// Plain text in, text out: no widgets, no files. The review form and the
// expert's window sit on top of this.

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vexil::Expert {

/// One row of the review list.
struct TvxFoundString
{
    QString id;          ///< "String ID:"
    QString text;        ///< "String constant:" (decoded literal; const mode: the constant's name)
    QString replacement; ///< "Will be replaced by:"
    QString sourceLine;  ///< "Source line:"

    // Statement mode: where the literal stands, as written (prefix and quotes included).
    qsizetype position = -1;
    qsizetype length = 0;

    // Const-section mode.
    QString name;  ///< the constant's name
    QString value; ///< its decoded value
    int line = -1; ///< index of the declaration in the merged line list
    int merged = 0; ///< how many continuation lines were joined into it
};

/// (identifier, text) pairs for the component's `Strings` table, in the
/// order they are added.
using TvxStringEntries = QList<QPair<QString, QString>>;

/// What the calls of one scan start with: `ui->Vexil1` in the form's own
/// unit, `VEXIL_FORM(Form1)` (a run-time look-up by the form's object name)
/// in any other unit.
QString callPrefix(const QString &formName, const QString &componentName, bool formsOwnUnit);

/// The literal's text as the review list shows it: the escapes \" \\ \n \r
/// \t decoded, every other escape kept as written.
QString decodeLiteral(const QString &written);

/// The comment text of a replacement call: the first 15 characters of the
/// literal as written, "..." when it is longer; never ends inside an escape
/// and never closes the comment.
QString excerpt(const QString &written);

/// Result of a scan: the rows, or the message that ends the scan.
struct TvxScanResult
{
    QList<TvxFoundString> rows;
    QString message; ///< set when nothing was found
    bool ok() const { return message.isEmpty(); }
};

/// Statement mode. @p counter is the number of lines already in the
/// component's `Strings` table; identifiers count up from it. Rows with
/// equal texts share the first one's identifier and replacement.
TvxScanResult scanStatements(const QString &source, const QString &prefix, int counter);

/// Statement mode rewrite: each row's literal replaced by its replacement,
/// in one forward pass (rows in ascending position, as the scan gives them).
QString rewriteStatements(const QString &source, const QList<TvxFoundString> &rows);

/// The rows' (identifier, text) pairs sorted by "identifier\x01text"
/// (case-insensitive, as text: IDS_10 before IDS_9), duplicates once.
TvxStringEntries stringEntries(const QList<TvxFoundString> &rows);

/// @p text as a field of a table line whose delimiter is @p delimiter: a
/// delimiter character inside it is written as the escape C++ source uses
/// for it (a tab as \t, any other as \xHH), so the line keeps its fields.
QString escapeDelimiter(const QString &text, QChar delimiter);

/// @p table (a `Strings` table) with @p entries added as AddString adds
/// them: an identifier already there loses its old line, the new line (the
/// text as the first language's, delimiter-escaped) goes to the end.
QStringList addToStrings(QStringList table, const TvxStringEntries &entries, QChar delimiter);

/// Const-section mode scan. The unit's lines are merged where a declaration
/// continues over several lines; @p mergedLines receives that line list,
/// which rewriteConstSection() works on.
TvxScanResult scanConstSection(const QString &source, const QString &prefix, QStringList *mergedLines);

/// The value of a constant's initialiser: adjacent or "+"-joined literals,
/// decoded, through QStringLiteral( QLatin1String( QString( tr( QT_TR_NOOP(;
/// anything else ends it. @p expression starts right after the "=".
QString evaluateConstValue(const QString &expression);

/// Const-section rewrite of the form's unit. Declarations become
/// `static QString NAME;`, the constructor and the language slot each get
/// one more `UpdateStrings();` before their closing brace (every run adds
/// one), and UpdateStrings() gets the assignments.
QString rewriteConstSection(QStringList lines, const QList<TvxFoundString> &rows, const QString &className,
                            const QString &componentName, const QString &prefix, const QString &lineEnd);

/// The line ending a text uses ("\r\n" when its first line ends so).
QString lineEndOf(const QString &text);

/// The slot a language change calls: on_Vexil1_languageChanged.
QString languageSlotName(const QString &componentName);

/// Makes sure the form class in @p header declares `void method();` in
/// the section @p section ("private slots:" or "private:"), added when
/// missing. Returns the header unchanged when the class is not found.
QString ensureDeclaration(const QString &header, const QString &className, const QString &method,
                          const QString &section);
/// Makes sure @p source defines `void Class::method()`; an empty one is
/// appended when missing.
QString ensureDefinition(const QString &source, const QString &className, const QString &method);

/// Identifiers of @p stringsTable whose use `GetText("ID")` appears
/// nowhere in @p source, in table order. An identifier is the text of its
/// line before the first @p delimiter (the whole line when there is none).
QStringList unusedIdentifiers(const QString &source, const QStringList &stringsTable, QChar delimiter);

/// The review list and its operations (delete, marks, start identifier,
/// identifier edits, pointer cast). Rows are numbered from 1, as in the
/// grid whose row 0 is the header.
class TvxFoundList
{
public:
    explicit TvxFoundList(QList<TvxFoundString> rows = {}) : m_rows(std::move(rows)) {}

    const QList<TvxFoundString> &rows() const { return m_rows; }
    int rowCount() const { return int(m_rows.size()); }
    const TvxFoundString &row(int r) const { return m_rows.at(r - 1); }
    /// Marked row numbers, in the order they were marked.
    const QList<int> &marks() const { return m_marks; }
    bool isMarked(int r) const { return m_marks.contains(r); }
    bool changed() const { return m_changed; }

    /// Ctrl+M and Ctrl+click.
    void toggleMark(int r);
    /// Marks exactly the rows that were not marked.
    void invertMarks();
    /// Shift+click on row @p r: with one mark, marks the range from it to
    /// @p r. With two or more, clearing the old marks runs past the end of
    /// the shrinking list: false, @p error gets the list's index error, part
    /// of the old marks stay and no range is marked.
    bool shiftClick(int r, QString *error = nullptr);

    /// Deletes row @p r.
    void deleteRow(int r);
    /// Deletes the marked rows: the first mark's row goes, every remaining
    /// mark is lowered by one, until no mark is left (a mark lowered to 0
    /// names no row and is dropped).
    void deleteMarked();

    /// The start number offered: row 1's identifier from its fifth character.
    QString startIdSuggestion() const;
    /// Renumbers from @p answer; false (nothing changed, @p error set) when
    /// it is not an integer.
    bool applyStartId(const QString &answer, QString *error = nullptr);

    /// Column edits. Setting the identifier rebuilds the replacement around it.
    void setId(int r, const QString &id);
    void setText(int r, const QString &text);
    void setReplacement(int r, const QString &replacement);

    /// Wraps the replacement of every marked row (of row @p current when
    /// none is marked) in qPrintable(...), for places that take a char pointer.
    /// A joining " + " at its end stays outside the cast.
    void castToCharPointer(int current);

private:
    QList<TvxFoundString> m_rows;
    QList<int> m_marks;
    bool m_changed = false;
};

/// Messages of the scan.
namespace Msg {
inline QString noStrings() { return QStringLiteral("There no strings in source!"); }
inline QString noConstStrings() { return QStringLiteral("There are no strings in CONST section!"); }
inline QString translated()
{
    return QStringLiteral("Source file translated. All string constants added to \"Strings\" property.");
}
inline QString startIdNotInteger() { return QStringLiteral("For automatic generation start ID shall be ineteger!"); }
inline QString changedColumns() { return QStringLiteral("You changed important columns! Continue?"); }
} // namespace Msg

} // namespace Vexil::Expert
