#pragma once

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "image/LXImage.h"

#include <atomic>
#include <thread>

/// What others do with a document while a piece floats above it, on threads of their own.
class Bystanders
{
public:
    explicit Bystanders(const LXDocumentInterface* document)
        : m_Reader([this, document] { Repeat([&] { Read(document); }); }),
          m_Copier([this, document] { Repeat([&] { Copy(document); }); })
    {}

    ~Bystanders()
    {
        m_bGoOn = false;
        m_Reader.join();
        m_Copier.join();
    }

    Q_DISABLE_COPY(Bystanders)

    int Rounds() const { return m_Rounds; }

    int Misfits() const { return m_Misfits; }

private:
    template <class Work>
    void Repeat(const Work& work)
    {
        while (m_bGoOn) {
            work();
            ++m_Rounds;
        }
    }

    void Read(const LXDocumentInterface* document)
    {
        const LXDocumentLayerLockerForRead locker(document, 1);
        const bool fits = document->GetLayerGeometry(1).size() == document->GetLayerImage(1)->Rect().size() &&
                          document->GetMaskGeometry(1).size() == document->GetMaskImage(1)->Rect().size();
        if (!fits) ++m_Misfits;
        const LXDocumentSelectionLockerForRead selection(document);
        if (document->GetSelectionGeometry().size() != document->GetSelectionMask().Rect().size())
            ++m_Misfits;
    }

    void Copy(const LXDocumentInterface* document)
    {
        LXDocumentInterface* copy = LXDocumentFactory::Instance()->Copy(document);
        if (copy->GetLayerGeometry(1).size() != copy->GetLayerImage(1)->Rect().size()) ++m_Misfits;
        LXDocumentFactory::Instance()->Release(copy);
    }

    std::atomic<bool> m_bGoOn{true};
    std::atomic<int> m_Rounds{0};
    std::atomic<int> m_Misfits{0};
    std::thread m_Reader;
    std::thread m_Copier;
};
