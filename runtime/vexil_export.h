#pragma once

#include <QtCore/qglobal.h>

#if defined(VEXIL_BUILD_LIBRARY)
#  define VEXIL_EXPORT Q_DECL_EXPORT
#else
#  define VEXIL_EXPORT Q_DECL_IMPORT
#endif
