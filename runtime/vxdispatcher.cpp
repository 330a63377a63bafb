#include "vxdispatcher.h"

#include "vxcomp.h"
#include "vxerrors.h"
#include "vxloadwatcher.h"

#include <optional>

TVexilDispatcher::TVexilDispatcher(QWidget *parent)
    : QWidget(parent)
    , m_langNames(new TvxStringList(this))
{
    hide();
    setAttribute(Qt::WA_DontShowOnScreen);
    m_langNames->append(QStringLiteral("LANGUAGE N1"));
    m_loadWatcher = new TvxLoadWatcher(parent ? parent->window() : nullptr, [] {}, this);
}

TVexilDispatcher::~TVexilDispatcher()
{
    const QList<TvxCustomLang *> references = m_references;
    m_references.clear();
    for (TvxCustomLang *lang : references) {
        if (lang->LangDispatcher() == this)
            lang->SetLangDispatcher(nullptr);
    }
}

bool TVexilDispatcher::isLoading() const
{
    return m_loadWatcher->isLoading();
}

void TVexilDispatcher::Loaded()
{
    m_loadWatcher->finish();
    SetLangNames(m_langNames); // its own list: nothing happens, as intended
}

void TVexilDispatcher::pushToReferences(const std::function<void(TvxCustomLang *)> &push)
{
    // While form-building code sets this dispatcher, what it passes on is
    // part of building the form too: the components stay loading.
    const bool loading = isLoading();
    const QList<TvxCustomLang *> references = m_references;
    for (TvxCustomLang *lang : references) {
        std::optional<TvxCustomLang::FormWrite> write;
        if (loading)
            write.emplace(lang);
        push(lang);
    }
}

void TVexilDispatcher::SetActiveLanguage(int value)
{
    m_activeLanguage = value;
    pushToReferences([value](TvxCustomLang *lang) { lang->SetActLang(value); });
    if (!isLoading() && value >= 1 && m_langNames->count() >= value)
        m_language = m_langNames->at(value - 1);
}

void TVexilDispatcher::SetNumOfLanguages(int value)
{
    m_numLanguages = value;
    Vexil::fitLanguageNames(m_langNames, value);
    pushToReferences([value](TvxCustomLang *lang) { lang->SetNumLang(value); });
}

void TVexilDispatcher::SetLangNames(const TvxStringList *names)
{
    if (!names || names == m_langNames)
        return;
    SetLangNames(names->lines());
}

void TVexilDispatcher::SetLangNames(const QStringList &names)
{
    // No names is one language without a name, which is what the count of
    // one set below would give: the components get that name too, never an
    // empty list.
    QStringList upper = Vexil::upperCased(names);
    if (upper.isEmpty())
        upper << QStringLiteral("LANGUAGE N1");
    // Too few names for the active language: refused before anything
    // changes, as a component does (a form being loaded only stores them).
    if (m_activeLanguage > upper.size() && !isLoading())
        throw EListError(QStringLiteral("List index out of bounds (%1)").arg(m_activeLanguage - 1));
    m_langNames->setLines(upper);
    if (m_activeLanguage >= 1 && m_activeLanguage <= upper.size())
        m_language = upper.at(m_activeLanguage - 1);
    pushToReferences([this](TvxCustomLang *lang) {
        lang->SetLangNames(m_langNames);
        lang->SetLanguage(m_language);
    });
    SetNumOfLanguages(upper.size());
}

void TVexilDispatcher::SetLanguage(const QString &name)
{
    if (name == m_language)
        return;
    const int pos = m_langNames->lines().indexOf(name.toUpper());
    if (!m_langNames->isEmpty() && pos < 0)
        throw ELanguageError(QStringLiteral("Language name shall be included in LangNames property!"));
    m_language = name;
    if (!isLoading() && !m_langNames->isEmpty())
        SetActiveLanguage(pos + 1);
}

void TVexilDispatcher::AddReference(TvxCustomLang *lang)
{
    if (!lang)
        return;
    // A state the component could not take is refused before the component
    // or the list changes.
    if (m_numLanguages < 1)
        throw ELanguageError(QString::number(m_numLanguages) + QLatin1String(" - is not a valid property value !")
                             + QChar(13) + QLatin1String("Value must be more than ZERO !"));
    if (m_activeLanguage < 1 || m_activeLanguage > m_numLanguages)
        throw ELanguageError(QString::number(m_activeLanguage) + QLatin1String(" - is not a valid property value !")
                             + QChar(13) + QLatin1String("Value must be within [1..NumOfLanguages] !"));
    m_references.removeOne(lang);
    m_references.append(lang);
    if (!m_watched.contains(lang)) {
        // A component stays listed here even after it moved to another
        // dispatcher, so follow its destruction rather than rely on it.
        m_watched.append(lang);
        connect(lang, &QObject::destroyed, this, [this, lang] {
            m_references.removeAll(lang);
            m_watched.removeAll(lang);
        });
    }
    // A component standing on a language past this count switches first,
    // while its own count still allows both languages; otherwise the names
    // would be too few for its active language.
    if (lang->ActiveLanguage() > m_numLanguages) {
        if (lang->NumOfLanguages() < m_activeLanguage)
            lang->SetNumLang(m_numLanguages);
        lang->SetActLang(m_activeLanguage);
    }
    lang->SetNumLang(m_numLanguages);
    lang->SetLangNames(m_langNames);
    lang->SetActLang(m_activeLanguage);
    lang->m_language = m_language;
}

void TVexilDispatcher::RemovePossibleReference(TvxCustomLang *lang)
{
    m_references.removeOne(lang);
}
