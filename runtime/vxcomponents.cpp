#include "vxcomponents.h"

#include "vxcomp.h"
#include "vxpropaccess.h"
#include "vxpropinfolist.h"

#include <QtWidgets/QWidget>

namespace {

bool hasOwnTranslationComponent(QObject *object)
{
    return TvxCustomLang::componentOf(object) != nullptr;
}

bool isSeparateWindow(QObject *object)
{
    if (!object->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(object);
    return widget->isWindow() && widget->windowType() != Qt::Popup;
}

} // namespace

TvxComponentList::TvxComponentList(QObject *owner)
    : m_owner(owner)
{
    if (!owner)
        return;
    m_ownerClass = QString::fromLatin1(owner->metaObject()->className());
    m_fingerprint = qHashMulti(0, quintptr(owner), quintptr(owner->metaObject()));
    collect(owner);
}

void TvxComponentList::collect(QObject *parent)
{
    for (QObject *child : parent->children()) {
        const QString name = child->objectName();
        // Qt's own inner widgets are no components, but the pages of a tab
        // widget or the viewport of a scroll area hold the form's widgets.
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_"))) {
            m_components.append(child);
            quint64 h = qHashMulti(m_fingerprint, quintptr(child), quintptr(child->metaObject()), name);
            if (TvxPropInfoList::hasCollections(child)) {
                const TvxPropInfoList collections(child, TvxPropInfo::Collection);
                for (const TvxPropInfo &info : collections.items())
                    h = qHashMulti(h, TvxPropAccess::collectionCount(child, info.name));
            }
            m_fingerprint = h;
        }
        if (isSeparateWindow(child) || hasOwnTranslationComponent(child))
            continue;
        collect(child);
    }
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
