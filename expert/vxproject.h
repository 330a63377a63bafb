#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The translation state of one form: its translation component, how many
/// lines each table holds and how many texts each language still lacks.
struct TvxTranslationState
{
    QString componentClass;   ///< empty when the form has no translation component
    QString componentName;
    int numLanguages = 0;
    QStringList categories;   ///< the table properties that hold lines, in table order
    QList<int> lineCounts;    ///< lines per entry of categories
    QList<int> untranslated;  ///< per language (index 0 = language 1): lines whose text is empty

    bool hasComponent() const { return !componentClass.isEmpty(); }
    int lines(const QString &category) const;
};

/// One form of the project folder.
struct TvxProjectForm
{
    QString formName;  ///< the top widget's object name
    QString className; ///< the .ui's <class>
    QString uiPath;
    QString cppPath;   ///< empty when the folder has no unit of that base name
    QString hPath;
    TvxTranslationState state;
    QString error;     ///< why the .ui could not be read (the form is still listed)
};

namespace VexilProject {

/// The classes of translation component the expert recognises and inserts.
QStringList translationClasses();
/// The table properties of a translation component, in table order (the
/// eleven common ones, then the list- and tree-view items).
QStringList tableProperties();

/// Counts lines and untranslated texts of @p tables (one entry per name of
/// @p categories): a line's text of language k is field k + 1 between
/// @p delimiter characters; a language whose field is empty or missing
/// counts as untranslated. Linear in the total length of the tables.
TvxTranslationState countTables(const QStringList &categories, const QList<QStringList> &tables,
                                int numLanguages, QChar delimiter);

/// Reads @p uiPath: the form's name and class and its translation state.
/// A file that cannot be read or parsed gives a form with error set.
TvxProjectForm readForm(const QString &uiPath);

} // namespace VexilProject

/// A project folder: its .ui files are the forms, its .cpp/.h files the
/// units; the project file is the unit that defines main(.
class TvxProject
{
public:
    TvxProject() = default;
    explicit TvxProject(const QString &folder) { setFolder(folder); }

    void setFolder(const QString &folder);
    QString folder() const { return m_folder; }
    /// Reads the folder again.
    void refresh();

    const QList<TvxProjectForm> &forms() const { return m_forms; }
    QStringList units() const { return m_units; }
    QString projectFile() const { return m_projectFile; }
    /// The form of that object name, or -1.
    int indexOf(const QString &formName) const;

private:
    QString m_folder;
    QList<TvxProjectForm> m_forms;
    QStringList m_units;
    QString m_projectFile;
};
