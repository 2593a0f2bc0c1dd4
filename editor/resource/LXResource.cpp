#include "resource/LXResource.h"

QVariant LXResource::GetData(ConstRole role)
{
    switch (role) {
    case ProductName: return QStringLiteral("Zenkari");
    case ProductVersion: return QStringLiteral(ZK_PRODUCT_VERSION);
    case ApplicationName: return QStringLiteral("zenkari");
    }
    return QVariant();
}
