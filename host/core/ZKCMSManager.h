#pragma once

#include "ZKHostExport.h"

#include "image/ZKCMSProfile.h"
#include "image/ZKCMSTransform.h"

#include <QObject>
#include <QString>

#include <memory>

class ZKCMSManagerPrivate;

/// The color profiles that the program works with. Main thread only.
///
/// The list begins with sRGB, which is also what a picture without a profile counts as; it holds what was
/// added and the RGB profiles that stand in the person's and the system's folders for them. Those are read in
/// the background after the start; who asks for all of the list earlier waits. It only ever grows, so an
/// index means the same profile until the program ends.
class ZK_HOST_EXPORT ZKCMSManager : public QObject
{
    Q_OBJECT

public:
    static ZKCMSManager* GetInstance();
    ~ZKCMSManager() override;

    int GetRGBProfileCount() const;
    /// @param index  from 0 to GetRGBProfileCount() - 1; any other gives sRGB
    ZKCMSProfile GetRGBProfile(int index) const;
    /// For people; no two are equal. Empty for an index that isn't there.
    QString GetRGBProfileName(int index) const;
    /// Where the profile was found, absolute; empty for sRGB and for an index that isn't there.
    QString GetRGBProfileFile(int index) const;
    /// Whether colors can be brought into it, as ZKCMSProfile::IsTarget(), which takes longer to find out.
    /// False for an index that isn't there.
    bool IsRGBTarget(int index) const;
    /// The profile of that name or, when none has it, of that file; -1 for neither.
    int FindRGBProfile(const QString& nameOrFile) const;

    /// Reads a profile from a file and takes it into the list, unless it stands there already.
    /// @param message  why there is none, in words for people; not written otherwise
    /// @return its index; -1 for a file that is missing, damaged, or no RGB profile
    int AddRGBProfile(const QString& file, QString* message);

    /// Which of the profiles the program's own colors (foreground, gradients) are meant in; sRGB at first.
    int GetWorkingRGBIndex() const;
    /// Does nothing for an index that isn't there, and for a profile that no color can be brought into.
    void SetWorkingRGBIndex(int index);

    /// What the screen shows; sRGB at first.
    ZKCMSProfile GetDisplayProfile() const;
    /// How pictures are brought to the screen.
    ZKCMSRendering GetDisplayRendering() const;
    /// A profile that no color can be brought into, and none, count as sRGB.
    void SetDisplay(const ZKCMSProfile& profile, const ZKCMSRendering& rendering);

    /// From a profile, such as a document's, to the screen's; empty between equals. None and a damaged one
    /// count as sRGB.
    ZKCMSTransform ToDisplay(const ZKCMSProfile& profile) const;
    /// From the working profile, for the program's own colors.
    ZKCMSTransform OwnToDisplay() const;

signals:
    void WorkingProfileChanged();
    /// Whatever goes through ToDisplay() looks different.
    void DisplayChanged();

private:
    ZKCMSManager();

    std::unique_ptr<ZKCMSManagerPrivate> m_pPrivate;
};
