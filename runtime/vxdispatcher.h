#pragma once

#include "vexil_export.h"
#include "vxstringlist.h"

#include <QtCore/QList>
#include <QtWidgets/QWidget>

#include <functional>

class TvxCustomLang;
class TvxLoadWatcher;

/// Keeps one language setting (count, names, active language) for many
/// translation components, typically one per window, and pushes every
/// change to all of them.
///
/// A component registers by pointing its LangDispatcher at the dispatcher.
/// References are dropped when either side is destroyed.
class VEXIL_EXPORT TVexilDispatcher : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int ActiveLanguage READ ActiveLanguage WRITE SetActiveLanguage)
    Q_PROPERTY(int NumOfLanguages READ NumOfLanguages WRITE SetNumOfLanguages)
    Q_PROPERTY(QStringList LangNames READ langNameLines WRITE SetLangNames)
    Q_PROPERTY(QString Language READ Language WRITE SetLanguage)
public:
    explicit TVexilDispatcher(QWidget *parent = nullptr);
    ~TVexilDispatcher() override;

    int ActiveLanguage() const { return m_activeLanguage; }
    /// Stores @p value and switches every registered component to it.
    void SetActiveLanguage(int value);
    int NumOfLanguages() const { return m_numLanguages; }
    /// Stores @p value, fits the names to it and passes it on.
    void SetNumOfLanguages(int value);
    TvxStringList *LangNames() const { return m_langNames; }
    QStringList langNameLines() const { return m_langNames->lines(); }
    /// Upper-cases and stores @p names, passes them on and sets the count.
    void SetLangNames(const QStringList &names);
    void SetLangNames(const TvxStringList *names);
    QString Language() const { return m_language; }
    /// Switches to the language named @p name (any letter case).
    /// Throws ELanguageError when the names lack it.
    void SetLanguage(const QString &name);

    /// Registers @p lang (once, at the end) and pushes this state to it.
    void AddReference(TvxCustomLang *lang);
    /// Forgets the first registration of @p lang.
    void RemovePossibleReference(TvxCustomLang *lang);
    /// The registered components in registration order.
    const QList<TvxCustomLang *> &references() const { return m_references; }

    /// Ends loading; runs once, by itself just before the window is shown.
    void Loaded();
    bool isLoading() const;

    // Setters under the names form code generated from .ui files calls.
    void setActiveLanguage(int value) { SetActiveLanguage(value); }
    void setNumOfLanguages(int value) { SetNumOfLanguages(value); }
    void setLangNames(const QStringList &names) { SetLangNames(names); }
    void setLanguage(const QString &name) { SetLanguage(name); }

private:
    QList<TvxCustomLang *> m_references;
    QList<TvxCustomLang *> m_watched; // components whose destruction we follow
    int m_activeLanguage = 1;
    int m_numLanguages = 1;
    QString m_language;
    TvxStringList *m_langNames;
    void pushToReferences(const std::function<void(TvxCustomLang *)> &push);

    TvxLoadWatcher *m_loadWatcher;
};
