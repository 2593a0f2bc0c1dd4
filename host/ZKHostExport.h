#pragma once

#include <QtGlobal>

/// Marks what `libzenkari` offers to the plug-in. Classes that are cast or thrown across the boundary
/// carry it as well, so that both sides share one copy of their type information.
#if defined(ZK_HOST_BUILD)
#define ZK_HOST_EXPORT Q_DECL_EXPORT
#else
#define ZK_HOST_EXPORT Q_DECL_IMPORT
#endif
