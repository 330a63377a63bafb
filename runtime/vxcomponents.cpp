#include "vxcomponents.h"

#include "vxcomp.h"
#include "vxdispatcher.h"
#include "vxformstorage.h"
#include "vxpropaccess.h"
#include "vxpropinfolist.h"

#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QWidget>

namespace {

bool hasOwnTranslationComponent(QObject *object)
{
    return TvxCustomLang::componentOf(object) != nullptr;
}

// Names Qt gives the helpers it creates inside its own widgets.
bool isQtInternalName(const QString &name)
{
    const QChar first = name.isEmpty() ? QChar() : name.front();
    if (first != QLatin1Char('q') && first != QLatin1Char('_'))
        return false;
    return name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("_q_"))
        || name == QLatin1String("_layout");
}

// Controls whose children are all Qt's own making (a tab bar's scroll
// buttons, a line edit's clear action, a spin box's editor, a view's
// scroll bars), and actions: nothing designed lives inside them.
bool isClosedControlClass(const QMetaObject *mo)
{
    static const QMetaObject *const closed[] = {
        &QAbstractButton::staticMetaObject, &QAbstractSlider::staticMetaObject, &QAbstractSpinBox::staticMetaObject,
        &QComboBox::staticMetaObject,       &QLineEdit::staticMetaObject,       &QTabBar::staticMetaObject,
        &QLabel::staticMetaObject,          &QProgressBar::staticMetaObject,    &QAbstractItemView::staticMetaObject,
        &QCalendarWidget::staticMetaObject, &QTextEdit::staticMetaObject,       &QPlainTextEdit::staticMetaObject,
        &QDialogButtonBox::staticMetaObject, &QKeySequenceEdit::staticMetaObject, &QAction::staticMetaObject};
    for (const QMetaObject *c : closed) {
        if (mo->inherits(c))
            return true;
    }
    return false;
}

// The suite's own non-visual components are widgets only so that Designer
// can place them: they have nothing to translate.
bool isSuiteComponentClass(const QMetaObject *mo)
{
    return mo->inherits(&TvxCustomLang::staticMetaObject) || mo->inherits(&TVexilDispatcher::staticMetaObject)
        || mo->inherits(&TvxFormStorage::staticMetaObject);
}

// What the walk needs to know of a class, worked out once per class.
struct ClassTraits
{
    bool closed = false;
    bool suite = false;
    bool action = false;
    bool collections = false;
};

const ClassTraits &traitsOf(const QObject *object)
{
    static QHash<const QMetaObject *, ClassTraits> cache;
    const QMetaObject *mo = object->metaObject();
    const auto found = cache.constFind(mo);
    if (found != cache.cend())
        return found.value();
    ClassTraits t;
    t.closed = isClosedControlClass(mo);
    t.suite = isSuiteComponentClass(mo);
    t.action = mo->inherits(&QAction::staticMetaObject);
    t.collections = TvxPropInfoList::hasCollections(object); // a class's properties are the same for all
    return cache.insert(mo, t).value();
}

bool isSeparateWindow(QObject *object)
{
    if (!object->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(object);
    return widget->isWindow() && widget->windowType() != Qt::Popup;
}

} // namespace

namespace {

// The part of an object's state beyond its name that decides its lines.
quint64 stateOf(const QObject *object, bool action, bool collections)
{
    quint64 h = 0;
    if (action) {
        const auto *a = static_cast<const QAction *>(object);
        // Whether an action is a separator decides whether it has a caption line.
        h = qHashMulti(h, a->isSeparator(), a->text() == QLatin1String("-"));
    }
    if (collections) {
        const TvxPropInfoList list(object, TvxPropInfo::Collection);
        for (const TvxPropInfo &info : list.items())
            h = qHashMulti(h, TvxPropAccess::collectionCount(object, info.name));
    }
    return h;
}

} // namespace

TvxComponentList::TvxComponentList(QObject *owner)
    : m_owner(owner)
{
    if (!owner)
        return;
    m_ownerClass = TvxCustomLang::formClassName(owner);
    m_fingerprint = qHashMulti(0, quintptr(owner), quintptr(owner->metaObject()));
    collect(owner);
}

void TvxComponentList::collect(QObject *parent)
{
    m_entered.append(parent);
    for (QObject *child : parent->children()) {
        const QString name = child->objectName();
        // Qt's own inner widgets are no components, but the pages of a tab
        // widget or the viewport of a scroll area hold the form's widgets.
        // A form embedded with a translation component of its own belongs
        // to that component, itself and everything in it.
        if (hasOwnTranslationComponent(child))
            continue;
        const ClassTraits &traits = traitsOf(child);
        const quint64 state =
            traits.action || traits.collections ? stateOf(child, traits.action, traits.collections) : 0;
        m_seen.append({child, name, state, traits.action, traits.collections});
        if (!name.isEmpty() && !traits.suite && !isQtInternalName(name)) {
            m_components.append(child);
            m_fingerprint = qHashMulti(m_fingerprint, quintptr(child), quintptr(child->metaObject()), name, state);
        }
        // Nothing designed lives inside Qt's closed controls, another window
        // or the suite's own components.
        if (traits.closed || traits.suite || isSeparateWindow(child))
            continue;
        collect(child);
    }
}

bool TvxComponentList::stillCurrent() const
{
    for (const Seen &seen : m_seen) {
        if (seen.object->objectName() != seen.name)
            return false;
        if ((seen.action || seen.collections) && stateOf(seen.object, seen.action, seen.collections) != seen.state)
            return false;
    }
    return true;
}

QObject *TvxComponentList::find(const QString &name) const
{
    if (m_byName.isEmpty() && !m_components.isEmpty()) {
        m_byName.reserve(m_components.size());
        for (QObject *object : m_components) {
            const QString n = object->objectName();
            if (!m_byName.contains(n))
                m_byName.insert(n, object);
        }
    }
    return m_byName.value(name);
}

QObject *TvxComponentList::findOrOwner(const QString &name) const
{
    if (QObject *component = find(name))
        return component;
    return name == m_ownerClass ? m_owner : nullptr;
}

bool TvxComponentList::knows(const QString &name) const
{
    return find(name) || name == m_ownerClass;
}
