#include "formats/PictureMetadata.h"

#include "core/IccFile.h"
#include "formats/ExifBlock.h"
#include "formats/Orientation.h"
#include "formats/Picture.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {
/// @param why  goes on after the profile's name
QString LeftOut(const QString& why)
{
    return QCoreApplication::translate("PictureMetadata",
                                       "The color profile in the file %1 It was left out: the colors are "
                                       "shown as sRGB.")
        .arg(why);
}
} // namespace

QString PictureMetadata::ProfileProblem(const ZKCMSProfile& profile)
{
    return LeftOut(IccFile::WhyUnusable(profile));
}

QString PictureMetadata::RefusedProfileProblem()
{
    return LeftOut(QCoreApplication::translate(
        "PictureMetadata", "is damaged, or isn't made for the picture's kind of colors."));
}

QByteArray PictureMetadata::ExifOf(const QList<ZKEXIFElement>& elements)
{
    const auto whole = std::find_if(elements.begin(), elements.end(),
                                    [](const ZKEXIFElement& element) { return element.tag == 0; });
    return whole == elements.end() ? QByteArray() : whole->value;
}

void PictureMetadata::TakeProfile(const QByteArray& bytes, Picture& picture)
{
    if (bytes.isEmpty()) return;
    const ZKCMSProfile profile(bytes);
    if (profile.IsValid()) {
        picture.iccProfile = bytes;
    } else {
        picture.profileProblem = ProfileProblem(profile);
    }
}

double PictureMetadata::TidyDpi(double dpi)
{
    constexpr double dust = 0.02;
    if (!(dpi > 0 && dpi <= LargestDpi)) return 0;
    const double whole = std::round(dpi);
    return std::abs(dpi - whole) < dust ? whole : std::round(dpi * 100) / 100;
}

void PictureMetadata::ApplyOrientation(Picture& picture)
{
    ExifBlock exif(picture.exif);
    const int orientation = exif.GetOrientation();
    if (orientation == 1) return;
    picture.image = Orientation::MakeUpright(picture.image, orientation);
    exif.SetOrientation(1);
    picture.exif = exif.GetBytes();
}

void PictureMetadata::Refresh(Picture& picture)
{
    picture.dpi = TidyDpi(picture.dpi);
    if (picture.exif.isEmpty()) return;
    ExifBlock exif(picture.exif);
    exif.SetOrientation(1);
    exif.SetPixelSize(picture.image.Rect().size());
    if (picture.dpi > 0) exif.SetDpi(picture.dpi);
    exif.DropThumbnail();
    picture.exif = exif.GetBytes();
}
