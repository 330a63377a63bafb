#include "vxvexilrt.h"

#include "vxdialogtypes.h"
#include "vxrteditor.h"

void TVexilRT::afterLoaded()
{
    // A missing or damaged storage file leaves the designed texts in place.
    if (m_loadOnCreate && !isDesigning() && fileHasEntries(m_storageFile))
        LoadAllFromFile(m_storageFile, true);
}

bool TVexilRT::EditProperty(TStringsType category)
{
    codeCall();
    TvxStringList *table = GetPropListByType(category);
    if (!table || TfrmRTEditor::ShowDesigner(this, table, category) != mrYes)
        return false;
    SaveAllToFile(m_storageFile, m_storageDelimiter);
    return true;
}
