#pragma once

#include "formats/FormatFailure.h"
#include "formats/FormatLimits.h"
#include "formats/OraStack.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QXmlStreamReader>

/// Reads the list of layers, "stack.xml". No document type, no entities, no depth beyond the limit. What it
/// doesn't know it takes along. Any thread.
class OraStackReader
{
    Q_DECLARE_TR_FUNCTIONS(OraStackReader)

public:
    OraStackReader(const QByteArray& xml, const ArchiveLimits& limits) : m_Reader(xml), m_Limits(limits) {}

    FormatFailure Read(OraStack* stack);

private:
    /// What the groups around a layer add to it.
    struct Group
    {
        QPoint offset;
        double opacity = 1;
        bool isVisible = true;
        int depth = 1;
    };

    bool ReadImage();
    bool ReadRootStack();
    bool ReadStack(const Group& group);
    bool ReadNestedStack(const Group& outer);
    bool ReadLayer(const Group& group);
    bool ReadLayerAttributes(OraStack::Layer* layer);
    bool ReadMode(const QString& compositeOp, OraStack::Layer* layer);
    bool ReadLayerChild(OraStack::Layer* layer, int depth);
    bool ReadMask(OraStack::Layer* layer);
    bool ReadMetadata(OraStack::Layer* layer);
    bool ReadText(OraStack::Layer* layer);
    bool ReadAdjustment(OraStack::Layer* layer);
    bool ReadSelection();
    bool ReadChannel();
    bool ReadProfile();
    bool ReadGuide();
    bool ReadPath();
    bool ReadSample();
    bool ReadImageAttributes();
    bool ReadImageChild(bool* hasStack);

    bool NextChild();
    bool SkipContent(int depth);
    bool KeepElement(int depth, QByteArray* bytes);
    bool IsOwn(const char* name) const;
    bool IsPlain(const char* name) const;
    QString Text(const char* attribute) const;
    QString OwnText(const char* attribute) const;
    bool ReadOffset(QPoint* offset) const;
    bool ReadImageRef(OraStack::Image* image) const;
    bool ReadOpacity(double* opacity) const;
    bool Refuse(PictureFile::Error error, const QString& why = QString());

    QXmlStreamReader m_Reader;
    const ArchiveLimits& m_Limits;
    OraStack* m_pStack = nullptr;
    FormatFailure m_Failure;
};
