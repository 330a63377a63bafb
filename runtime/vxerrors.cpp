#include "vxerrors.h"

EVexilError::EVexilError(const QString &message)
    : std::runtime_error(message.toStdString())
    , m_message(message)
{
}
