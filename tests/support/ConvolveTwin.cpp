#include "support/ConvolveTwin.h"

#include <algorithm>
#include <cmath>

PlainImage ConvolveTwin::ConvolveAlpha(const PlainImage& image, const std::vector<double>& kernel,
                                       const QSize& size)
{
    PlainImage result = image;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            double sum = 0;
            for (int j = 0; j < size.height(); ++j) {
                for (int i = 0; i < size.width(); ++i) {
                    const int fromX = std::clamp(x + i - size.width() / 2, 0, image.width - 1);
                    const int fromY = std::clamp(y + j - size.height() / 2, 0, image.height - 1);
                    const int place = j * size.width() + i;
                    const double weight = kernel[static_cast<std::size_t>(place)];
                    sum += weight * image.At(fromX, fromY).Alpha();
                }
            }
            // A half goes up, also where the rounding of the weights has made it a little less.
            const double rounded = std::floor(sum + 0.5 + 1e-9);
            result.At(x, y).bytes[3] = static_cast<quint8>(std::clamp(rounded, 0.0, 255.0));
        }
    }
    return result;
}
