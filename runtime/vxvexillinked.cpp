#include "vxvexillinked.h"

#include "vxfindnamed.h"

void TVexilLinked::SetCommonContainer(TvxCustomLang *container)
{
    if (container == m_container || container == this)
        return;
    m_container = container;
    m_containerName.clear();
    if (!isLoading())
        takeContainerTables();
}

QString TVexilLinked::commonContainerName() const
{
    return m_container ? m_container->objectName() : m_containerName;
}

void TVexilLinked::setCommonContainerName(const QString &name)
{
    m_containerName = name;
    if (auto *found = Vexil::findNamed<TvxCustomLang>(owner(), name)) {
        if (found != this) {
            m_container = found;
            m_containerName.clear();
        }
    }
}

TvxStringList *TVexilLinked::GetPropListByType(TStringsType type) const
{
    // Dialog texts and locale settings belong to the container.
    if (type == stDlgsCaptions || type == stLocales)
        return nullptr;
    return TVexil::GetPropListByType(type);
}

void TVexilLinked::afterLoaded()
{
    if (!m_container && !m_containerName.isEmpty())
        setCommonContainerName(m_containerName);
    takeContainerTables();
}

void TVexilLinked::takeContainerTables()
{
    if (isDesigning()) {
        DlgsCaptions()->clear();
        Locales()->clear();
        return;
    }
    if (!m_container)
        return;
    DlgsCaptions()->assign(*m_container->DlgsCaptions());
    Locales()->assign(*m_container->Locales());
}
