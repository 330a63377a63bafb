#pragma once

#include "vexil_export.h"

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>

/// A connection to the dictionary manager on the session bus: the six calls
/// the grid editor makes. Each call waits for the answer; an error the
/// manager raises, or a manager that cannot be reached, throws EVexilError
/// with its message. The bus starts a manager that is not running yet.
class VEXIL_EXPORT TvxDictionaryClient
{
public:
    /// Connects to the manager serving under @p service (the path "/" and
    /// the interface "dicmngr.TVexilDicMngr").
    explicit TvxDictionaryClient(const QString &service);

    QString service() const { return m_service; }

    /// Position of @p language in the dictionary, negative when absent.
    int IndexOfLang(const QString &language);
    void AddLanguage(const QString &language);
    void AddTranslation(const QString &language1, const QString &language2, const QString &text1,
                        const QString &text2);
    /// The translation of @p text, or an empty text when there is none.
    QString GetTranslation(const QString &source, const QString &target, const QString &text);
    /// GetTranslation() sent without waiting, so that many look-ups travel at
    /// once; translationOf() waits for its answer.
    QDBusPendingCall GetTranslationAsync(const QString &source, const QString &target, const QString &text);
    /// The answer of a GetTranslationAsync() call; throws EVexilError as the
    /// waiting calls do.
    static QString translationOf(QDBusPendingCall &call);
    void SetVisible(bool visible);
    /// Stores the dictionary; false when the manager could not.
    bool Save();

private:
    QVariant call(const char *method, const QVariantList &args);
    QDBusMessage message(const char *method, const QVariantList &args) const;

    QString m_service;
};
