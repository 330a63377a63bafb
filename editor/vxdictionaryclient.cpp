#include "vxdictionaryclient.h"

#include "vxerrors.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

namespace {

const QString interfaceName = QStringLiteral("dicmngr.TVexilDicMngr");

} // namespace

TvxDictionaryClient::TvxDictionaryClient(const QString &service)
    : m_service(service)
{
}

QDBusMessage TvxDictionaryClient::message(const char *method, const QVariantList &args) const
{
    if (!QDBusConnection::sessionBus().isConnected())
        throw EVexilError(QStringLiteral("The dictionary manager cannot be reached: there is no session bus."));
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, QStringLiteral("/"), interfaceName,
                                                          QLatin1String(method));
    message.setArguments(args);
    return message;
}

namespace {

QVariant answerOf(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw EVexilError(QStringLiteral("Dictionary manager: %1").arg(reply.errorMessage()));
    const QList<QVariant> values = reply.arguments();
    return values.isEmpty() ? QVariant() : values.first();
}

} // namespace

QVariant TvxDictionaryClient::call(const char *method, const QVariantList &args)
{
    return answerOf(QDBusConnection::sessionBus().call(message(method, args)));
}

QDBusPendingCall TvxDictionaryClient::GetTranslationAsync(const QString &source, const QString &target,
                                                          const QString &text)
{
    return QDBusConnection::sessionBus().asyncCall(message("GetTranslation", {source, target, text}));
}

QString TvxDictionaryClient::translationOf(QDBusPendingCall &call)
{
    call.waitForFinished();
    return answerOf(call.reply()).toString();
}

int TvxDictionaryClient::IndexOfLang(const QString &language)
{
    return call("IndexOfLang", {language}).toInt();
}

void TvxDictionaryClient::AddLanguage(const QString &language)
{
    call("AddLanguage", {language});
}

void TvxDictionaryClient::AddTranslation(const QString &language1, const QString &language2, const QString &text1,
                                         const QString &text2)
{
    call("AddTranslation", {language1, language2, text1, text2});
}

QString TvxDictionaryClient::GetTranslation(const QString &source, const QString &target, const QString &text)
{
    return call("GetTranslation", {source, target, text}).toString();
}

void TvxDictionaryClient::SetVisible(bool visible)
{
    call("SetVisible", {visible});
}

bool TvxDictionaryClient::Save()
{
    return call("Save", {}).toBool();
}
