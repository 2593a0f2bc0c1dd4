#include "image/LXImage.h"
#include "image/LXTileManager.h"

#include <cstdio>
#include <memory>

namespace {
/// Static objects go in the reverse order: this one is made before the store, so it goes after it.
class LateImage
{
public:
    ~LateImage()
    {
        try {
            LXTileManager::Instance();
        } catch (const LXTMBadInstance&) {
            std::puts("no store");
        }
        m_Image.reset();
        std::puts("image gone");
        std::fflush(stdout);
    }

    void Make() { m_Image = std::make_unique<LXImage32>(300, 300); }

    LXImage32& Get() { return *m_Image; }

private:
    std::unique_ptr<LXImage32> m_Image;
};

LateImage s_Late;
} // namespace

int main()
{
    try {
        s_Late.Make();
        s_Late.Get().SetColor(1, 1, LXRGBA32i(0xFF102030));
        return s_Late.Get().GetColor(1, 1).value == 0xFF102030 ? 0 : 1;
    } catch (...) {
        return 2;
    }
}
