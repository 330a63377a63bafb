#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusContext>

class TvxDictionaryStore;

/// The dictionary manager's object on the session bus (path "/", interface
/// "dicmngr.TVexilDicMngr"): the six calls of the grid editor's dictionary
/// commands, answered from a `TvxDictionaryStore`. A refused call gets an
/// error reply carrying the store's message; nothing throws out of a slot.
class TvxDicMngrService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "dicmngr.TVexilDicMngr")

public:
    static QString interfaceName() { return QStringLiteral("dicmngr.TVexilDicMngr"); }

    /// Serves @p store. When the store is not open, each call first tries to
    /// open @p fileName again (read-only when @p readOnly), so a file that
    /// was damaged or missing can be put right without restarting.
    TvxDicMngrService(TvxDictionaryStore *store, const QString &fileName, bool readOnly,
                      QObject *parent = nullptr);

    /// Registers the object at "/" of @p connection (its scriptable slots).
    bool exportOn(class QDBusConnection connection);

public slots:
    Q_SCRIPTABLE int IndexOfLang(const QString &name);
    Q_SCRIPTABLE void AddLanguage(const QString &name);
    Q_SCRIPTABLE void AddTranslation(const QString &lang1, const QString &lang2,
                                     const QString &text1, const QString &text2);
    Q_SCRIPTABLE QString GetTranslation(const QString &source, const QString &target,
                                        const QString &text);
    Q_SCRIPTABLE void SetVisible(bool visible);
    Q_SCRIPTABLE bool Save();

signals:
    /// A client asked to show or hide the manager's window.
    void visibilityRequested(bool visible);
    /// The dictionary was changed through the bus.
    void changed();

private:
    TvxDictionaryStore *m_store;
    QString m_fileName;
    bool m_readOnly;

    template <typename F>
    auto call(F &&work) -> decltype(work());
    void replyError(const QString &name, const QString &message);
};
