#include "vxdictionaryclient.h"

#include "vxbusservice.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

namespace {

const QString interfaceName = QStringLiteral("dicmngr.TVexilDicMngr");
const QString managerName = QStringLiteral("Dictionary manager");

} // namespace

TvxDictionaryClient::TvxDictionaryClient(const QString &service)
    : m_service(service)
{
}

QDBusMessage TvxDictionaryClient::message(const char *method, const QVariantList &args) const
{
    return Vexil::busMethodCall(m_service, interfaceName, method, args);
}

QVariant TvxDictionaryClient::call(const char *method, const QVariantList &args)
{
    return Vexil::busReplyValue(QDBusConnection::sessionBus().call(message(method, args)), managerName);
}

QDBusPendingCall TvxDictionaryClient::GetTranslationAsync(const QString &source, const QString &target,
                                                          const QString &text)
{
    return QDBusConnection::sessionBus().asyncCall(message("GetTranslation", {source, target, text}));
}

QString TvxDictionaryClient::translationOf(QDBusPendingCall &call)
{
    call.waitForFinished();
    return Vexil::busReplyValue(call.reply(), managerName).toString();
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
