#include "vxcomp.h"

#include "vxcomponents.h"
#include "vxdispatcher.h"
#include "vxerrors.h"
#include "vxfindnamed.h"
#include "vxformwatch.h"
#include "vxloadwatcher.h"
#include "vxlocalesettings.h"
#include "vxpropaccess.h"
#include "vxpropinfolist.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtGui/QAction>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMainWindow>

#include <typeinfo>
#if defined(__GNUG__)
#include <cxxabi.h>
#include <cstdlib>
#endif

namespace {

const char versionText[] = "v4.9";

QHash<const QObject *, TvxCustomLang *> &registry()
{
    static QHash<const QObject *, TvxCustomLang *> owners;
    return owners;
}

// The C++ class of @p object as the compiler knows it: unlike the
// meta-object's class name it also names a subclass without Q_OBJECT.
QByteArray dynamicClassName(const QObject *object)
{
    const char *name = typeid(*object).name();
#if defined(__GNUG__)
    int status = 0;
    char *demangled = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    if (status == 0 && demangled) {
        const QByteArray result(demangled);
        std::free(demangled);
        return result;
    }
    return QByteArray(name);
#else
    QByteArray result(name);
    for (const char *prefix : {"class ", "struct "}) {
        if (result.startsWith(prefix))
            result.remove(0, int(qstrlen(prefix)));
    }
    return result;
#endif
}

// The top widgets of forms open in a form designer: Qt's own classes
// embedded in the designer's window, each a form of its own all the same.
QSet<const QWidget *> &designedFormRoots()
{
    static QSet<const QWidget *> roots;
    return roots;
}

// Qt reserves class names of a "Q" and a capital for itself.
bool isQtClassName(const QByteArray &name)
{
    return name.size() > 1 && name.at(0) == 'Q' && name.at(1) >= 'A' && name.at(1) <= 'Z';
}

// A widget that is a form in its own right: a window, a main window or a
// dialog (even embedded), or an instance of one of the application's own
// classes, such as a form class that runs its own setupUi().
bool isFormRoot(const QWidget *widget)
{
    return widget->isWindow() || designedFormRoots().contains(widget) || qobject_cast<const QMainWindow *>(widget) || qobject_cast<const QDialog *>(widget)
        || !isQtClassName(dynamicClassName(widget));
}

// The form a component created under @p given translates: the nearest form
// root at or above it. Inner containers (a main window's central widget, a
// group box) belong to the form around them.
QObject *ownerFor(QObject *given)
{
    if (!given || !given->isWidgetType())
        return given;
    QWidget *widget = static_cast<QWidget *>(given);
    while (!isFormRoot(widget) && widget->parentWidget())
        widget = widget->parentWidget();
    return widget;
}

QString outOfRangeMessage(int value, const char *rule)
{
    return QString::number(value) + QLatin1String(" - is not a valid property value !") + QChar(13)
        + QLatin1String(rule);
}

QString languageNameMessage()
{
    return QStringLiteral("Language name shall be included in LangNames property!");
}

// The component name of a key: the whole key, or for categories keyed by
// component and property the text before the first ".".
QString componentOfKey(const QString &key, TStringsType type)
{
    if (type == stMultiLines || type == stOtherStrings || type == stCollections || type == stListView_TreeView_Items) {
        const int dot = key.indexOf(QLatin1Char('.'));
        return dot >= 0 ? key.left(dot) : key;
    }
    return key;
}

QString propertyOfKey(const QString &key)
{
    const int dot = key.indexOf(QLatin1Char('.'));
    return dot >= 0 ? key.mid(dot + 1) : QString();
}

// The parts of a collection key: component.Collection[index].Property
struct CollectionKey
{
    QString component;
    QString collection;
    QString item;
    bool indexOk = false;
    int index = -1;
};

CollectionKey parseCollectionKey(const QString &key)
{
    CollectionKey k;
    const int dot = key.indexOf(QLatin1Char('.'));
    k.component = dot >= 0 ? key.left(dot) : key;
    const int open = key.indexOf(QLatin1Char('['), dot + 1);
    const int close = open >= 0 ? key.indexOf(QLatin1Char(']'), open) : -1;
    if (dot < 0 || open < 0 || close < 0)
        return k;
    k.collection = key.mid(dot + 1, open - dot - 1);
    k.index = key.mid(open + 1, close - open - 1).toInt(&k.indexOk);
    if (key.mid(close, 2) == QLatin1String("]."))
        k.item = key.mid(close + 2);
    return k;
}

QString hookedProperty(TStringsType type, const QObject *object)
{
    switch (type) {
    case stCaptions:
        return TvxPropInfoList::captionProperty(object);
    case stHints:
        return TvxPropInfoList::findProperty(object, QStringLiteral("toolTip")) ? QStringLiteral("toolTip") : QString();
    case stDisplayLabels:
        return TvxPropInfoList::findProperty(object, QStringLiteral("displayLabel")) ? QStringLiteral("displayLabel")
                                                                                       : QString();
    default:
        return QString();
    }
}

bool isMenuSeparator(const QObject *object)
{
    auto *action = qobject_cast<const QAction *>(object);
    return action && action->isSeparator();
}

bool isFormStorage(const QObject *object)
{
    return object->inherits("TvxFormStorage");
}

} // namespace

/// Lines of vanished components, kept per category so that a renamed
/// component takes back its own kind of texts; each line is claimed once.
struct TvxCustomLang::StaleLines
{
    struct Category
    {
        QStringList lines;
        QList<bool> claimed;
        QHash<QString, QList<int>> byText; // built on first search
        int indexedLanguage = -1;
    };
    Category categories[StringsTypeCount];
    QHash<QString, QString> charSets; // vanished component name -> its character-set line
};

TvxCustomLang::TvxCustomLang(QObject *given)
    : QWidget(given && given->isWidgetType() ? static_cast<QWidget *>(given) : nullptr)
    , m_owner(ownerFor(given))
{
    if (m_owner && registry().contains(m_owner))
        throw EVexilError(QStringLiteral("Only one TvxCustomLang component per Form/DataModule allowed!"));
    if (m_owner) {
        m_ownerKey = m_owner;
        registry().insert(m_owner, this);
        ++TvxFormWatch::componentsGeneration();
        // A widget owner frees the component with its children; any other
        // owner (a data module) is not its parent, so it frees it here.
        if (!m_owner->isWidgetType())
            connect(m_owner, &QObject::destroyed, this, [this] { delete this; });
    }

    hide();
    setAttribute(Qt::WA_DontShowOnScreen);

    for (auto &t : m_tables)
        t = new TvxStringList(this);
    m_doNotTranslate = new TvxStringList(this);
    m_langNames = new TvxStringList(this);
    m_version = QLatin1String(versionText);
    m_langNames->append(QStringLiteral("LANGUAGE N1"));
    m_language = m_langNames->at(0);

    const QChar d = m_langDelim;
    QStringList dialogs;
    for (const QString &text : Vexil::defaultDialogTexts())
        dialogs << Vexil::dialogKey(text) + d + text + d;
    DlgsCaptions()->setLines(dialogs);

    TvxLocaleSettings *settings = TvxLocaleSettings::instance();
    const QStringList items = Vexil::localeItemNames();
    QStringList locales;
    for (int i = 0; i < TvxLocaleSettings::ItemCount; ++i) {
        const QString value = settings->value(TvxLocaleSettings::Item(i));
        m_savedLocale << value;
        locales << items.at(i) + d + value + d;
    }
    Locales()->setLines(locales);
    m_options = {};

    m_loadWatcher = new TvxLoadWatcher(m_owner, [this] { Loaded(); }, this);
    m_formWatch = new TvxFormWatch(this);
}

TvxCustomLang::~TvxCustomLang()
{
    if (m_dispatcher)
        m_dispatcher->RemovePossibleReference(this);
    auto &owners = registry();
    auto it = owners.find(m_ownerKey);
    if (it != owners.end() && it.value() == this) {
        owners.erase(it);
        ++TvxFormWatch::componentsGeneration();
    }
}

void TvxCustomLang::markDesignedForm(QWidget *form)
{
    if (!form || designedFormRoots().contains(form))
        return;
    designedFormRoots().insert(form);
    QObject::connect(form, &QObject::destroyed, [form] { designedFormRoots().remove(form); });
}

QString TvxCustomLang::formClassName(const QObject *owner)
{
    if (!owner)
        return QString();
    if (owner->isWidgetType() && designedFormRoots().contains(static_cast<const QWidget *>(owner))
        && !owner->objectName().isEmpty())
        return owner->objectName();
    return QString::fromLatin1(owner->metaObject()->className());
}

TvxCustomLang *TvxCustomLang::componentOf(const QObject *owner)
{
    return registry().value(owner);
}

TvxCustomLang *TvxCustomLang::formComponent(const char *formName)
{
    const QString name = QString::fromUtf8(formName);
    if (!name.isEmpty()) {
        const auto &owners = registry();
        for (auto it = owners.cbegin(); it != owners.cend(); ++it) {
            if (it.key()->objectName() == name)
                return it.value();
        }
    }
    // One hidden component without owner stands in for a missing form, so
    // that generated calls never dereference a null pointer.
    // It goes with the application object, as every widget must.
    static QPointer<TvxCustomLang> empty;
    if (!empty) {
        empty = new TvxCustomLang(static_cast<QObject *>(nullptr));
        qAddPostRoutine([] { delete empty.data(); });
    }
    return empty.data();
}

bool TvxCustomLang::isLoading() const
{
    return m_loadWatcher && m_loadWatcher->isLoading();
}

void TvxCustomLang::Loaded()
{
    if (m_loadWatcher && m_loadWatcher->isLoading()) {
        m_loadWatcher->finish(); // calls back here once loading has ended
        return;
    }
    if (m_loadedDone)
        return;
    m_loadedDone = true;
    completeDialogTexts();
    if (m_options & loUseExtCommonStrings) {
        DlgsCaptions()->clear();
        Locales()->clear();
    }
    resolveDispatcherName();
    afterLoaded();
}

void TvxCustomLang::codeCall()
{
    // Form-building code (setupUi, QUiLoader, Designer) writes through the
    // Qt-style setters; anything else the application calls on a component
    // still loading means the form is built, so loading ends first.
    if (m_formWrites == 0 && isLoading())
        Loaded();
}

void TvxCustomLang::completeDialogTexts()
{
    TvxStringList *dialogs = DlgsCaptions();
    if (dialogs->count() != Vexil::MessageDialogTextCount)
        return;
    const QStringList texts = Vexil::defaultDialogTexts();
    dialogs->beginUpdate();
    for (int i = Vexil::MessageDialogTextCount; i < texts.size(); ++i)
        dialogs->append(Vexil::dialogKey(texts.at(i)) + m_langDelim + texts.at(i) + m_langDelim);
    dialogs->endUpdate();
}

TvxStringList *TvxCustomLang::GetPropListByType(TStringsType type) const
{
    if (type < 0 || type >= StringsTypeCount)
        return nullptr;
    // A class offers the tables it publishes as properties.
    if (metaObject()->indexOfProperty(Vexil::CategoryTableNames[type]) < 0)
        return nullptr;
    return table(type);
}

void TvxCustomLang::SetTable(TStringsType type, const TvxStringList *lines)
{
    TvxStringList *own = table(type);
    if (!own || !lines || lines == own)
        return;
    SetTable(type, lines->lines());
}

void TvxCustomLang::SetTable(TStringsType type, const QStringList &lines)
{
    codeCall();
    TvxStringList *own = table(type);
    if (!own)
        return;
    own->setLines(lines);
    if (type == stDlgsCaptions)
        return;
    m_lastAssigned = type;
    if (!isLoading())
        ChangeLanguage();
}

void TvxCustomLang::SetVersion(const QString &)
{
    m_version = QLatin1String(versionText);
}

// --- look-ups ------------------------------------------------------------

int TvxCustomLang::findKeyLine(const TvxStringList *list, const QString &key) const
{
    // The key here is the text before the first delimiter. The index knows
    // keys as the first field, which is the same for every well-formed line;
    // a candidate that starts with the delimiter or has none sends the
    // search the slow way.
    if (key.isEmpty()) {
        for (int j = 0; j < list->count(); ++j) {
            if (list->at(j).indexOf(m_langDelim) <= 0)
                return j;
        }
        return -1;
    }
    const int i = list->indexOfKey(key, m_langDelim);
    if (i < 0)
        return -1;
    if (list->at(i).indexOf(m_langDelim) > 0)
        return i;
    const QString upper = Vexil::upperKey(key);
    for (int j = 0; j < list->count(); ++j) {
        const QString &line = list->at(j);
        const int d = line.indexOf(m_langDelim);
        if (d > 0 && Vexil::upperKey(line.left(d)) == upper)
            return j;
    }
    return -1;
}

int TvxCustomLang::findExactLine(const TvxStringList *list, const QString &key) const
{
    return list->indexOfExactKey(key, m_langDelim);
}

const TvxCustomLang *TvxCustomLang::externalSource(TStringsType type) const
{
    if (!m_dispatcher)
        return nullptr;
    for (TvxCustomLang *other : m_dispatcher->references()) {
        const TvxStringList *list = other->table(type);
        if (list && list->count() > 0)
            return other;
    }
    return nullptr;
}

QString TvxCustomLang::GetTextFrom(const TvxStringList *list, const QString &id, bool useDefault) const
{
    if (!list)
        return QString();
    const int i = list->indexOfKey(id, m_langDelim);
    if (i >= 0) {
        QString result = list->field(i, m_activeLanguage + 1, m_langDelim);
        if (result.isEmpty() && useDefault)
            result = ExtractWord(2, list->at(i), m_langDelim);
        return result;
    }
    TStringsType external;
    if ((m_options & loUseExtCommonStrings) && list == DlgsCaptions())
        external = stDlgsCaptions;
    else if ((m_options & loUseExtUDStrings) && list == Strings() && m_dispatcher)
        external = stStrings;
    else
        return QString();
    const TvxCustomLang *source = externalSource(external);
    // The first component with texts may be this one: its table has been
    // searched already, so the search ends here.
    if (!source || source == this)
        return QString();
    return GetTextFrom(source->table(external), id, useDefault);
}

QString TvxCustomLang::GetTextFromByIndex(const TvxStringList *list, int index, bool useDefault) const
{
    if (!list || index < 0 || index >= list->count())
        return QString();
    QString result = ExtractWord(m_activeLanguage + 1, list->at(index), m_langDelim);
    if (result.isEmpty() && useDefault)
        result = ExtractWord(2, list->at(index), m_langDelim);
    if ((m_options & loUseExtCommonStrings) && list == Locales() && m_dispatcher) {
        const TvxCustomLang *source = externalSource(stLocales);
        if (source && source != this)
            result = GetTextFromByIndex(source->Locales(), index, useDefault);
    }
    return result;
}

QString TvxCustomLang::GetStringValue(const TvxStringList *list, const QString &key, int lang) const
{
    if (!list)
        return QString();
    const int i = findKeyLine(list, key);
    return i >= 0 ? ExtractWord(lang + 1, list->at(i), m_langDelim) : QString();
}

void TvxCustomLang::ReplaceStringValue(TvxStringList *list, const QString &key, const QString &newText, int lang)
{
    if (!list)
        return;
    const int i = findKeyLine(list, key);
    if (i < 0)
        return;
    const QString &line = list->at(i);
    enum { Copying, Skipping, Done } state = Copying;
    unsigned char count = 0; // counts delimiters modulo 256
    QString result;
    result.reserve(line.size() + newText.size());
    for (QChar c : line) {
        if (c == m_langDelim)
            ++count;
        if (count == lang)
            state = Skipping;
        if (count == lang + 1) {
            result += m_langDelim;
            result += newText;
            state = Done;
            ++count;
        }
        if (state != Skipping)
            result += c;
    }
    list->replace(i, result);
}

QString TvxCustomLang::newLine(const QString &key, const QString &value) const
{
    QString line = key + m_langDelim + value;
    for (int i = 0; i < m_numLanguages; ++i)
        line += m_langDelim;
    return line;
}

// --- maintenance ----------------------------------------------------------

void TvxCustomLang::SetNumLang(int value)
{
    codeCall();
    if (value == m_numLanguages)
        return;
    if (value < 1)
        throw ELanguageError(outOfRangeMessage(value, "Value must be more than ZERO !"));
    m_numLanguages = value;
    Vexil::fitLanguageNames(m_langNames, m_numLanguages);
}

void TvxCustomLang::SetLangNames(const TvxStringList *names)
{
    if (!names || names == m_langNames)
        return;
    SetLangNames(names->lines());
}

void TvxCustomLang::SetLangNames(const QStringList &names)
{
    codeCall();
    if (m_activeLanguage < 1 || m_activeLanguage > names.size())
        throw EListError(QStringLiteral("List index out of bounds (%1)").arg(m_activeLanguage - 1));
    const QStringList upper = Vexil::upperCased(names);
    m_langNames->setLines(upper);
    m_language = upper.at(m_activeLanguage - 1);
}

void TvxCustomLang::SetLanguage(const QString &name)
{
    codeCall();
    if (name == m_language)
        return;
    const int pos = m_langNames->lines().indexOf(name.toUpper());
    if (pos < 0)
        throw ELanguageError(languageNameMessage());
    m_language = name;
    if (!isLoading()) {
        SetActLang(pos + 1);
        m_language = name; // the switch set the stored upper-case name; keep the caller's
    }
}

void TvxCustomLang::SetLangDelim(QChar delim)
{
    codeCall();
    if (delim == m_langDelim)
        return;
    if (!isLoading())
        ChangeLangDelim(m_langDelim, delim);
    m_langDelim = delim;
}

void TvxCustomLang::ChangeLangDelim(QChar oldDelim, QChar newDelim)
{
    for (int t = 0; t < StringsTypeCount; ++t) {
        TvxStringList *list = GetPropListByType(TStringsType(t));
        if (!list)
            continue;
        QStringList lines = list->lines();
        for (QString &line : lines)
            line.replace(oldDelim, newDelim);
        list->setLines(lines);
    }
    if (m_stale) {
        for (auto &category : m_stale->categories) {
            for (QString &line : category.lines)
                line.replace(oldDelim, newDelim);
            category.byText.clear();
            category.indexedLanguage = -1;
        }
    }
}

bool TvxCustomLang::AddString(const QString &id, const QStringList &texts)
{
    TvxStringList *strings = Strings();
    const int existing = findExactLine(strings, id);
    if (existing >= 0)
        strings->removeAt(existing);
    QString line = id + m_langDelim;
    for (const QString &text : texts)
        line += text + m_langDelim;
    strings->append(line);
    return true;
}

bool TvxCustomLang::DeleteString(const QString &id)
{
    const int existing = findExactLine(Strings(), id);
    if (existing < 0)
        return false;
    Strings()->removeAt(existing);
    return true;
}

void TvxCustomLang::SetOptions(TVexilOptions options)
{
    codeCall();
    if (options == m_options)
        return;
    m_options = options;
    if ((m_options & loUseExtCommonStrings) && m_designing) {
        DlgsCaptions()->clear();
        Locales()->clear();
    }
}

void TvxCustomLang::SetDoNotList(const TvxStringList *list)
{
    if (!list || list == m_doNotTranslate)
        return;
    SetDoNotList(list->lines());
}

void TvxCustomLang::SetDoNotList(const QStringList &list)
{
    codeCall();
    // Names are compared upper-cased; keep one upper-cased entry per name.
    QStringList names;
    for (const QString &name : list) {
        const QString upper = name.trimmed().toUpper();
        if (!upper.isEmpty() && !names.contains(upper))
            names << upper;
    }
    m_doNotTranslate->setLines(names);
}

bool TvxCustomLang::isDoNotTranslate(const QString &componentName) const
{
    return !m_doNotTranslate->isEmpty()
        && m_doNotTranslate->indexOfKey(componentName, m_langDelim) >= 0;
}

void TvxCustomLang::SetLangDispatcher(TVexilDispatcher *dispatcher)
{
    codeCall();
    m_dispatcherName.clear();
    // A dispatcher that refuses the component is not kept.
    TVexilDispatcher *previous = m_dispatcher;
    m_dispatcher = dispatcher;
    if (dispatcher) {
        try {
            dispatcher->AddReference(this);
        } catch (...) {
            m_dispatcher = previous;
            throw;
        }
    }
}

QString TvxCustomLang::langDispatcherName() const
{
    return m_dispatcher ? m_dispatcher->objectName() : m_dispatcherName;
}

void TvxCustomLang::setLangDispatcherName(const QString &name)
{
    FormWrite write(this);
    if (name.isEmpty()) {
        if (m_dispatcher)
            m_dispatcher->RemovePossibleReference(this);
        m_dispatcher = nullptr;
        m_dispatcherName.clear();
        return;
    }
    if (m_dispatcher && m_dispatcher->objectName() == name)
        return;
    m_dispatcherName = name;
    resolveDispatcherName();
}

void TvxCustomLang::resolveDispatcherName()
{
    // A form file names the dispatcher; it may be built after this
    // component, so a name that finds none yet is tried again at the end
    // of loading. The form's own dispatcher wins over one elsewhere.
    if (m_dispatcherName.isEmpty())
        return;
    TVexilDispatcher *found = Vexil::findNamed<TVexilDispatcher>(m_owner, m_dispatcherName);
    if (found)
        SetLangDispatcher(found);
}

// --- switching -------------------------------------------------------------

void TvxCustomLang::SetActLang(int value)
{
    codeCall();
    if (value == m_activeLanguage)
        return;
    const bool loading = isLoading();
    if (value < 1 || value > m_numLanguages) {
        if (loading)
            return;
        throw ELanguageError(outOfRangeMessage(value, "Value must be within [1..NumOfLanguages] !"));
    }
    m_lastAssigned = -1;
    // One walk over the form serves both the build and the switch.
    const std::shared_ptr<const TvxComponentList> walked = m_formWatch->components(m_owner);
    const auto shared = shareComponents(*walked);
    if (m_dispatcher || !loading)
        BuildList();
    m_activeLanguage = value;
    if (!loading && m_langNames->count() >= value)
        m_language = m_langNames->at(value - 1);
    if (m_dispatcher || !loading)
        ChangeLanguage();
}

QString TvxCustomLang::textForApply(const TvxStringList *list, int index) const
{
    QString text = ExtractWord(m_activeLanguage + 1, list->at(index), m_langDelim);
    if (text.isEmpty() && m_translateType == ttGetDefault)
        text = GetTextFromByIndex(list, index, true);
    return text;
}

QStringView TvxCustomLang::textViewForApply(const QString &line) const
{
    // textForApply() of a table other than the locales, as a view into the line.
    QStringView text = ExtractWordView(m_activeLanguage + 1, line, m_langDelim);
    if (text.isEmpty() && m_translateType == ttGetDefault)
        text = ExtractWordView(2, line, m_langDelim);
    return text;
}

void TvxCustomLang::applyFormTexts(QWidget *form)
{
    auto firstText = [this](const TvxStringList *list) {
        QString text = ExtractWord(m_activeLanguage + 1, list->at(0), m_langDelim);
        if (text.isEmpty() && m_translateType == ttGetDefault)
            text = ExtractWord(2, list->at(0), m_langDelim);
        return text;
    };
    if (Captions()->count() > 0) {
        const QString text = firstText(Captions());
        if (!text.isEmpty() && form->windowTitle() != text)
            form->setWindowTitle(text);
    }
    if (Hints()->count() > 0) {
        const QString text = firstText(Hints());
        if (!text.isEmpty() && form->toolTip() != text)
            form->setToolTip(text);
    }
    if (Fonts()->count() > 0) {
        const QString family = firstText(Fonts());
        // The form's character-set line is keyed by its class name; a line
        // under its object name takes precedence.
        QString charSet = form->objectName().isEmpty()
            ? QString()
            : GetStringValue(CharSets(), form->objectName(), m_activeLanguage);
        if (charSet.isEmpty())
            charSet = GetStringValue(CharSets(), formClassName(form), m_activeLanguage);
        TvxPropAccess::applyFont(form, family, Vexil::charSetValue(charSet));
    }
}

void TvxCustomLang::ChangeLanguage()
{
    codeCall();
    std::shared_ptr<const TvxComponentList> own;
    const TvxComponentList &components = this->components(own);
    if (auto *form = qobject_cast<QWidget *>(m_owner.data()))
        applyFormTexts(form);

    auto wanted = [this](std::initializer_list<int> types) {
        if (m_lastAssigned == -1)
            return true;
        for (int t : types) {
            if (t == m_lastAssigned)
                return true;
        }
        return false;
    };
    if (wanted({stCaptions}))
        applyCategory(stCaptions, components);
    if (wanted({stHints}))
        applyCategory(stHints, components);
    if (wanted({stDisplayLabels}))
        applyCategory(stDisplayLabels, components);
    if (wanted({stFonts, stCharSets}))
        applyCategory(stFonts, components);
    if (wanted({stMultiLines}))
        applyCategory(stMultiLines, components);
    if (wanted({stOtherStrings}))
        applyCategory(stOtherStrings, components);
    if (wanted({stLocales}) && m_changeLocales)
        applyCategory(stLocales, components);
    if (wanted({stCollections}))
        applyCollections(components);
    applyVariantTexts();

    if (OnChangeLanguage)
        OnChangeLanguage(this);
    Q_EMIT languageChanged();
}

bool TvxCustomLang::columnHasText(TStringsType type, int lang) const
{
    const TvxStringList *list = table(type);
    ColumnTexts &c = m_columns[type];
    if (c.version != list->version() || c.delim != m_langDelim) {
        c.version = list->version();
        c.delim = m_langDelim;
        c.hasText.clear();
    }
    if (lang < c.hasText.size())
        return c.hasText.at(lang);
    const int known = int(c.hasText.size());
    c.hasText.resize(lang + 1);
    for (int l = qMax(known, 1); l <= lang; ++l) {
        bool any = false;
        for (int i = 0; i < list->count() && !any; ++i)
            any = !ExtractWordView(l + 1, list->at(i), m_langDelim).isEmpty();
        c.hasText[l] = any;
    }
    return c.hasText.at(lang);
}

void TvxCustomLang::applyCategory(TStringsType type, const TvxComponentList &components)
{
    TvxStringList *list = table(type);
    if (type != stLocales)
        delOldNames(list, type, components);
    // A language without a single text in this table (and, for fonts, in
    // the character sets) writes nothing when empty texts change nothing.
    if (m_translateType == ttNoChange && type != stLocales && !columnHasText(type, m_activeLanguage)
        && (type != stFonts || !columnHasText(stCharSets, m_activeLanguage)))
        return;
    const bool ownerIsForm = qobject_cast<QWidget *>(m_owner) != nullptr;
    int first = 0;
    if (ownerIsForm && (type == stCaptions || type == stHints || type == stFonts))
        first = 1;

    if (type != stFonts && type != stMultiLines && type != stLocales) {
        // The bound lines' texts of this language, kept with the bindings,
        // go to the widgets shared.
        Bindings &resolved = bindings(type, components);
        const QList<QString> &texts = textsToApply(type, resolved);
        for (int i = first; i < list->count(); ++i) {
            const TvxPropAccess::StringTarget &target = resolved.lines.at(i);
            const QString &text = texts.at(i);
            if (target.object && !text.isEmpty()) // an empty text writes nothing
                TvxPropAccess::writeString(target, text);
        }
        return;
    }
    TvxLocaleSettings *locale = TvxLocaleSettings::instance();
    for (int i = first; i < list->count(); ++i) {
        if (type == stLocales) {
            if (i >= TvxLocaleSettings::ItemCount)
                break;
            const QString &line = list->at(i);
            const int d = line.indexOf(m_langDelim);
            if (isDoNotTranslate(d >= 0 ? line.left(d) : line))
                continue;
            const QString text = textForApply(list, i);
            if (!text.isEmpty())
                locale->setValue(TvxLocaleSettings::Item(i), text);
            continue;
        }
        // An empty text writes nothing (a font line may still carry a
        // character set), so most untranslated lines end here.
        const QString text = textForApply(list, i);
        if (text.isEmpty() && type != stFonts)
            continue;
        const QString &line = list->at(i);
        const int d = line.indexOf(m_langDelim);
        const QString key = d >= 0 ? line.left(d) : line;
        const QString name = componentOfKey(key, type);
        if (isDoNotTranslate(name))
            continue;
        QObject *object = components.findOrOwner(name);
        if (type == stFonts) {
            const int charSet = Vexil::charSetValue(GetStringValue(CharSets(), name, m_activeLanguage));
            if (object && (!text.isEmpty() || charSet >= 0))
                TvxPropAccess::applyFont(object, text, charSet);
        } else if (object) {
            TvxPropAccess::writeLines(object, propertyOfKey(key), TvxStringList::fromCommaText(text));
        }
    }
}

const QList<QString> &TvxCustomLang::textsToApply(TStringsType type, Bindings &b)
{
    // The bindings are remade with every change of the table, so the texts
    // kept here are always the table's.
    if (b.textsType != m_translateType) {
        b.texts.clear();
        b.textsType = m_translateType;
    }
    if (b.texts.size() <= m_activeLanguage)
        b.texts.resize(m_activeLanguage + 1);
    QList<QString> &texts = b.texts[m_activeLanguage];
    if (texts.isEmpty()) {
        const TvxStringList *list = table(type);
        texts.reserve(list->count());
        for (int i = 0; i < list->count(); ++i) {
            const QStringView text = b.lines.at(i).object ? textViewForApply(list->at(i)) : QStringView();
            texts.append(text.isEmpty() ? QString() : text.toString());
        }
    }
    return texts;
}

TvxCustomLang::Bindings &TvxCustomLang::bindings(TStringsType type, const TvxComponentList &components)
{
    TvxStringList *list = table(type);
    Bindings &b = m_bindings[type];
    const QList<quint64> key{list->version(), components.fingerprint(), m_langDelim.unicode(),
                             m_doNotTranslate->version()};
    if (b.key == key)
        return b;
    b.key = key;
    b.texts.clear();
    b.lines.clear();
    b.lines.reserve(list->count());
    for (const QString &line : list->lines()) {
        const int d = line.indexOf(m_langDelim);
        const QString lineKey = d >= 0 ? line.left(d) : line;
        const QString name = componentOfKey(lineKey, type);
        QObject *object = isDoNotTranslate(name) ? nullptr : components.findOrOwner(name);
        QString property;
        if (object)
            property = type == stOtherStrings ? propertyOfKey(lineKey) : hookedProperty(type, object);
        b.lines.append(TvxPropAccess::stringTarget(property.isEmpty() ? nullptr : object, property));
    }
    return b;
}

void TvxCustomLang::applyCollections(const TvxComponentList &components)
{
    TvxStringList *list = Collections();
    delOldNames(list, stCollections, components);
    for (int i = 0; i < list->count(); ++i) {
        const QString &line = list->at(i);
        const int d = line.indexOf(m_langDelim);
        const CollectionKey k = parseCollectionKey(d >= 0 ? line.left(d) : line);
        if (isDoNotTranslate(k.component))
            continue;
        const QString text = textForApply(list, i);
        QObject *object = components.find(k.component);
        if (!object || !k.indexOk || text.isEmpty())
            continue;
        TvxPropAccess::writeItem(object, k.collection, k.index, k.item, text);
    }
}

// --- discovery -------------------------------------------------------------

QList<quint64> TvxCustomLang::buildInputs(const TvxComponentList &components) const
{
    // Everything a run-time build reads: the components, the tables it
    // edits, the do-not-translate list and the language count.
    QList<quint64> inputs;
    inputs.reserve(stListView_TreeView_Items + 3);
    for (int t = 0; t < stListView_TreeView_Items; ++t)
        inputs << m_tables[t]->version();
    inputs << m_doNotTranslate->version() << quint64(m_numLanguages) << components.fingerprint();
    return inputs;
}

TvxCustomLang::SharedComponents TvxCustomLang::shareComponents(const TvxComponentList &components)
{
    // Nested uses keep the outermost list.
    if (m_sharedComponents)
        return SharedComponents(nullptr);
    m_sharedComponents = &components;
    return SharedComponents(this);
}

const TvxComponentList &TvxCustomLang::components(std::shared_ptr<const TvxComponentList> &hold) const
{
    if (m_sharedComponents)
        return *m_sharedComponents;
    hold = m_formWatch->components(m_owner);
    return *hold;
}

void TvxCustomLang::BuildList()
{
    codeCall();
    if (isLoading() || !m_owner)
        return;
    std::shared_ptr<const TvxComponentList> own;
    const TvxComponentList &components = this->components(own);
    // At run time a build from unchanged inputs would change nothing.
    QList<quint64> inputs = m_designing ? QList<quint64>() : buildInputs(components);
    if (!m_designing && !m_stale && inputs == m_builtFrom)
        return;
    if (auto *form = qobject_cast<QWidget *>(m_owner.data()))
        buildFormLines(form);

    for (TStringsType type : {stCaptions, stHints, stDisplayLabels, stFonts, stMultiLines}) {
        delOldNames(table(type), type, components);
        scanCategory(type, components);
    }
    delOldNames(OtherStrings(), stOtherStrings, components);
    scanOtherStrings(components);
    delOldNames(Collections(), stCollections, components);
    scanCollections(components);
    checkRmdProps(components);
    m_stale.reset();
    m_builtFrom = m_designing ? QList<quint64>() : buildInputs(components);
}

void TvxCustomLang::buildFormLines(QWidget *form)
{
    const QString key = formClassName(form);
    auto place = [&](TvxStringList *list, const QString &value) {
        const QString line = newLine(key, value);
        if (list->isEmpty())
            list->append(line);
        else if (!list->at(0).startsWith(key + m_langDelim))
            list->insert(0, line);
    };
    place(Captions(), form->windowTitle());
    place(Hints(), form->toolTip());
    place(Fonts(), form->font().family());
    place(CharSets(), Vexil::charSetName(TvxPropAccess::readCharSet(form)));
}

void TvxCustomLang::updateOrAddLine(TvxStringList *list, TStringsType type, const QString &key,
                                    const std::function<QString()> &currentValue)
{
    // At run time an existing line is left as it is, so the property is
    // read only for new lines and in the designer.
    const int existing = findExactLine(list, key);
    if (existing >= 0 && !m_designing)
        return;
    const QString value = currentValue();
    if (existing >= 0) {
        // Values typed into the designer's property editor go into the
        // active language, unless that language has no text yet.
        const QString stored = ExtractWord(m_activeLanguage + 1, list->at(existing), m_langDelim);
        if (stored != value && !(stored.isEmpty() && m_activeLanguage != 1))
            ReplaceStringValue(list, key, value, m_activeLanguage);
        return;
    }
    if (m_stale) {
        StaleLines::Category &stale = m_stale->categories[type];
        if (!stale.lines.isEmpty()) {
            if (stale.indexedLanguage != m_activeLanguage) {
                stale.byText.clear();
                TvxStringList lines;
                lines.setLines(stale.lines);
                for (int i = 0; i < stale.lines.size(); ++i)
                    stale.byText[GetTextFromByIndex(&lines, i, true)].append(i);
                stale.indexedLanguage = m_activeLanguage;
            }
            QList<int> &candidates = stale.byText[value];
            while (!candidates.isEmpty()) {
                const int i = candidates.takeFirst();
                if (stale.claimed.at(i))
                    continue;
                stale.claimed[i] = true;
                const QString &old = stale.lines.at(i);
                const int d = old.indexOf(m_langDelim);
                list->append(key + old.mid(d));
                if (type == stFonts) {
                    const QString oldName = d >= 0 ? old.left(d) : old;
                    const QString charSet = m_stale->charSets.take(oldName);
                    if (!charSet.isEmpty() && findExactLine(CharSets(), key) < 0)
                        CharSets()->append(key + charSet.mid(charSet.indexOf(m_langDelim)));
                }
                return;
            }
        }
    }
    list->append(newLine(key, value));
}

void TvxCustomLang::scanCategory(TStringsType type, const TvxComponentList &components)
{
    TvxStringList *list = table(type);
    for (QObject *object : components.components()) {
        if (qobject_cast<TvxCustomLang *>(object))
            continue;
        const QString name = object->objectName();
        if (isDoNotTranslate(name))
            continue;
        switch (type) {
        case stFonts: {
            if (!TvxPropAccess::hasFont(object))
                break;
            updateOrAddLine(list, stFonts, name, [object] { return TvxPropAccess::readFont(object).family(); });
            updateOrAddLine(CharSets(), stCharSets, name,
                            [object] { return Vexil::charSetName(TvxPropAccess::readCharSet(object)); });
            break;
        }
        case stMultiLines: {
            if (isFormStorage(object))
                break;
            const TvxPropInfoList lists(object, TvxPropInfo::StringList);
            for (const TvxPropInfo &info : lists.items()) {
                updateOrAddLine(list, stMultiLines, name + QLatin1Char('.') + info.name, [object, &info] {
                    return TvxStringList::toCommaText(TvxPropAccess::readLines(object, info.name));
                });
            }
            break;
        }
        default: {
            const QString property = hookedProperty(type, object);
            if (property.isEmpty())
                break;
            if (type == stCaptions && isMenuSeparator(object))
                break;
            if (type == stCaptions && qobject_cast<QAction *>(object)
                && TvxPropAccess::readString(object, property) == QLatin1String("-"))
                break;
            updateOrAddLine(list, type, name, [object, &property] { return TvxPropAccess::readString(object, property); });
            break;
        }
        }
    }
}

void TvxCustomLang::scanOtherStrings(const TvxComponentList &components)
{
    TvxStringList *list = OtherStrings();
    auto scan = [&](QObject *object, const QString &name) {
        for (const TvxPropInfo &info : TvxPropInfoList::otherStringProperties(object)) {
            updateOrAddLine(list, stOtherStrings, name + QLatin1Char('.') + info.name,
                            [object, &info] { return TvxPropAccess::readString(object, info.name); });
        }
    };
    scan(m_owner, components.ownerClassName());
    for (QObject *object : components.components()) {
        if (qobject_cast<TvxCustomLang *>(object) || isDoNotTranslate(object->objectName()))
            continue;
        scan(object, object->objectName());
    }
}

void TvxCustomLang::scanCollections(const TvxComponentList &components)
{
    TvxStringList *list = Collections();
    for (QObject *object : components.components()) {
        if (qobject_cast<TvxCustomLang *>(object) || isDoNotTranslate(object->objectName()))
            continue;
        const TvxPropInfoList collections(object, TvxPropInfo::Collection);
        for (const TvxPropInfo &info : collections.items()) {
            const int n = TvxPropAccess::collectionCount(object, info.name);
            const QStringList itemProps = TvxPropAccess::collectionItemProperties(info.name);
            for (int i = 0; i < n; ++i) {
                for (const QString &itemProp : itemProps) {
                    const QString key = object->objectName() + QLatin1Char('.') + info.name + QLatin1Char('[')
                        + QString::number(i) + QLatin1String("].") + itemProp;
                    updateOrAddLine(list, stCollections, key, [object, &info, i, &itemProp] {
                        return TvxPropAccess::readItem(object, info.name, i, itemProp);
                    });
                }
            }
        }
    }
}

void TvxCustomLang::DelOldNames(TvxStringList *list, TStringsType type)
{
    std::shared_ptr<const TvxComponentList> own;
    delOldNames(list, type, components(own));
}

void TvxCustomLang::delOldNames(TvxStringList *list, TStringsType type, const TvxComponentList &components)
{
    // Without an owner there are no components to measure the lines against.
    if (!list || !m_owner || type < 0 || type >= StringsTypeCount || type == stDlgsCaptions || type == stStrings
        || type == stLocales)
        return;
    const QPair<quint64, quint64> state(list->version(), components.fingerprint());
    if (m_cleanFor[type] == state && list == table(type))
        return;
    QStringList kept;
    kept.reserve(list->count());
    QStringList removedFonts;
    bool changed = false;
    for (const QString &line : list->lines()) {
        const int d = line.indexOf(m_langDelim);
        const QString key = d >= 0 ? line.left(d) : line;
        const QString name = componentOfKey(key, type);
        bool keep = components.knows(name);
        if (keep && type == stCollections) {
            // A line whose collection or item is gone would name nothing.
            const CollectionKey k = parseCollectionKey(key);
            QObject *object = components.find(k.component);
            if (object) {
                const TvxPropInfo *info = TvxPropInfoList::findProperty(object, k.collection);
                keep = info && info->kind == TvxPropInfo::Collection && k.indexOk && k.index >= 0
                    && k.index < TvxPropAccess::collectionCount(object, k.collection);
                if (!keep) {
                    changed = true;
                    continue; // removed, not stale: the component is still there
                }
            }
        }
        if (keep) {
            kept << line;
            continue;
        }
        changed = true;
        if (!m_stale)
            m_stale = std::make_unique<StaleLines>();
        StaleLines::Category &stale = m_stale->categories[type];
        stale.lines << line;
        stale.claimed << false;
        stale.indexedLanguage = -1;
        if (type == stFonts)
            removedFonts << name;
    }
    if (!changed) {
        if (list == table(type))
            m_cleanFor[type] = state;
        return;
    }
    list->setLines(kept);
    if (!removedFonts.isEmpty()) {
        // A vanished component's character set goes with its font.
        QStringList charSets;
        for (const QString &line : CharSets()->lines()) {
            const int d = line.indexOf(m_langDelim);
            const QString name = d >= 0 ? line.left(d) : line;
            if (removedFonts.contains(name))
                m_stale->charSets.insert(name, line);
            else
                charSets << line;
        }
        CharSets()->setLines(charSets);
    }
}

void TvxCustomLang::CheckRmdProps()
{
    std::shared_ptr<const TvxComponentList> own;
    checkRmdProps(components(own));
}

void TvxCustomLang::checkRmdProps(const TvxComponentList &components)
{
    const QString ownerName = m_owner ? m_owner->objectName() : QString();
    for (TStringsType type : {stCaptions, stHints, stDisplayLabels, stFonts, stCharSets, stMultiLines,
                              stOtherStrings, stCollections}) {
        TvxStringList *list = table(type);
        QStringList kept;
        kept.reserve(list->count());
        for (const QString &line : list->lines()) {
            const int d = line.indexOf(m_langDelim);
            const QString key = d >= 0 ? line.left(d) : line;
            const QString name = componentOfKey(key, type);
            QObject *object = (!ownerName.isEmpty() && name == ownerName) ? m_owner.data()
                                                                           : components.findOrOwner(name);
            bool exists = false;
            if (object && object == m_owner.data() && object->isWidgetType()
                && (type == stCaptions || type == stHints)) {
                // A form always has its own caption and hint line, also when
                // it is embedded in another window and so shows neither.
                exists = true;
            } else if (object) {
                switch (type) {
                case stCaptions:
                case stHints:
                case stDisplayLabels:
                    exists = !hookedProperty(type, object).isEmpty();
                    break;
                case stFonts:
                case stCharSets:
                    exists = TvxPropAccess::hasFont(object);
                    break;
                case stCollections: {
                    const TvxPropInfo *info = TvxPropInfoList::findProperty(object, parseCollectionKey(key).collection);
                    exists = info && info->kind == TvxPropInfo::Collection;
                    break;
                }
                default: {
                    const TvxPropInfo *info = TvxPropInfoList::findProperty(object, propertyOfKey(key));
                    exists = info != nullptr;
                    break;
                }
                }
            }
            if (exists)
                kept << line;
        }
        if (kept.size() != list->count())
            list->setLines(kept);
    }
}
