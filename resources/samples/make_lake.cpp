// Paints lake.jpg: a mountain lake in the evening, all of it computed. Not part of the build:
//     c++ -std=c++17 -O2 make_lake.cpp -ljpeg -o make_lake && ./make_lake lake.jpg
// jpeglib.h takes for granted what <cstdio> declares.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace {
constexpr int Width = 1600;
constexpr int Height = 1067;
constexpr int Oversampling = 2;
constexpr int FineWidth = Width * Oversampling;
constexpr int FineHeight = Height * Oversampling;
constexpr double Horizon = 0.60 * FineHeight;
constexpr double FocalLength = 0.95 * FineWidth;
constexpr double EyeHeight = 9; // meters above the water, as all lengths here

struct Vec
{
    double x = 0, y = 0, z = 0; // right, up, away; or red, green, blue, linear
};

Vec operator+(Vec a, Vec b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Vec operator*(Vec a, double k)
{
    return {a.x * k, a.y * k, a.z * k};
}

Vec operator*(Vec a, Vec b)
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

double Dot(Vec a, Vec b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vec Unit(Vec a)
{
    return a * (1 / std::sqrt(Dot(a, a)));
}

Vec Mix(Vec a, Vec b, double t)
{
    return a * (1 - t) + b * t;
}

double Mix(double a, double b, double t)
{
    return a + (b - a) * t;
}

double Step(double from, double to, double value)
{
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double Random(int x, int y, uint32_t seed)
{
    uint32_t h = seed + static_cast<uint32_t>(x) * 374761393U + static_cast<uint32_t>(y) * 668265263U;
    h = (h ^ (h >> 13)) * 1274126177U;
    h = (h ^ (h >> 16)) * 2246822519U;
    return (h ^ (h >> 15)) / 4294967295.0;
}

// Smooth noise from 0 to 1, a new value each unit.
double Noise(double x, double y, uint32_t seed)
{
    const int column = static_cast<int>(std::floor(x));
    const int row = static_cast<int>(std::floor(y));
    const double u = Step(0, 1, x - column);
    const double v = Step(0, 1, y - row);
    return Mix(Mix(Random(column, row, seed), Random(column + 1, row, seed), u),
               Mix(Random(column, row + 1, seed), Random(column + 1, row + 1, seed), u), v);
}

double Clouds(double x, double y, int octaves, uint32_t seed)
{
    double sum = 0, weight = 0.5, total = 0;
    for (int i = 0; i < octaves; ++i, weight /= 2, x = x * 2.03 + 7.1, y = y * 2.03 + 3.7) {
        sum += weight * Noise(x, y, seed + static_cast<uint32_t>(i));
        total += weight;
    }
    return sum / total;
}

// Sharp crests and smooth valleys: each octave is damped where the one before is low.
double Ridges(double x, double y, int octaves, uint32_t seed)
{
    double sum = 0, weight = 0.5, crest = 1;
    for (int i = 0; i < octaves; ++i, weight /= 2.05) {
        double ridge = 1 - std::abs(2 * Noise(x, y, seed + static_cast<uint32_t>(i)) - 1);
        ridge *= ridge;
        sum += weight * ridge * crest;
        crest = std::clamp(ridge * 1.6, 0.0, 1.0);
        const double turned = 0.8 * x - 0.6 * y;
        y = (0.6 * x + 0.8 * y) * 2.02 + 1.3;
        x = turned * 2.02 + 5.2;
    }
    return sum;
}

// The land without its trees; below 0 stands water.
double Land(double x, double z)
{
    const double middle = 700 * std::sin(z / 4200.0 + 0.4) - 250;
    const double side = std::abs(x - middle);
    const double shore = 620 + 380 * Clouds(x / 900, z / 900, 3, 11) - 0.035 * z;
    const double slopes = std::max(0.0, side - shore);
    const double valley = Step(0, 5200, slopes) * 1900 + slopes * 0.10;
    const double back = Step(6800, 15000, z) * 2700;
    const double mountains = Ridges(x / 5200, z / 5200, 10, 71);
    const double hills =
        (Clouds(x / 700, z / 700, 5, 31) - 0.35) * 190 * Step(0, 500, slopes + Step(6800, 8000, z) * 600);
    return -14 + (valley + back) * (0.18 + 1.05 * mountains) + hills;
}

double TreeCover(double x, double z, double height, double steepness)
{
    const double line = 560 + 320 * Clouds(x / 800, z / 800, 4, 91);
    return Step(2, 8, height) * (1 - Step(line - 160, line + 60, height)) * (1 - Step(0.75, 1.25, steepness));
}

const Vec ToSun = Unit({-0.78, 0.30, -0.42});
const Vec SunLight{3.25, 1.36, 0.60};
const Vec SkyLight{0.27, 0.36, 0.60};

Vec Sky(double elevation, double across)
{
    const double t = std::clamp(elevation, 0.0, 1.0);
    Vec color = Mix({1.02, 0.58, 0.40}, {0.86, 0.60, 0.60}, Step(0.02, 0.16, t));
    color = Mix(color, {0.34, 0.46, 0.68}, Step(0.12, 0.34, t));
    color = Mix(color, {0.08, 0.19, 0.43}, Step(0.26, 0.60, t));
    // A band of thin evening clouds, low and far.
    const double veil = Clouds(across * 5.2 + elevation * 3, elevation * 34, 6, 5);
    const double band = Step(0.08, 0.15, t) * (1 - Step(0.20, 0.30, t));
    return Mix(color, {1.30, 0.72, 0.56}, 0.8 * band * Step(0.46, 0.74, veil));
}

Vec Haze(double across)
{
    return Mix({0.34, 0.33, 0.42}, {0.46, 0.36, 0.38}, Step(-0.6, 0.5, across));
}

// What the sun and the sky make of a point of the land.
Vec ShadeLand(double x, double z, double height, double trees, double distance)
{
    const double reach = std::max(6.0, distance / 900);
    const double dx = (Land(x + reach, z) - Land(x - reach, z)) / (2 * reach);
    const double dz = (Land(x, z + reach) - Land(x, z - reach)) / (2 * reach);
    const double steepness = std::hypot(dx, dz);
    const Vec normal = Unit({-dx, 1, -dz});

    const double speckle = Clouds(x / 46, z / 46, 4, 7);
    Vec ground = Mix({0.085, 0.078, 0.076}, {0.19, 0.165, 0.145}, Clouds(x / 150, height / 24, 5, 17));
    const Vec meadow = Mix({0.060, 0.075, 0.026}, {0.12, 0.115, 0.045}, speckle);
    ground = Mix(ground, meadow, (1 - Step(650, 1050, height)) * (1 - Step(0.6, 1.0, steepness)));
    const double snowLine = 1250 + 600 * Clouds(x / 600, z / 600, 4, 23);
    const double snow = Step(snowLine - 120, snowLine + 260, height + speckle * 260 - steepness * 420);
    ground = Mix(ground, {0.86, 0.88, 0.92}, snow);
    const Vec needles = Mix({0.012, 0.024, 0.014}, {0.040, 0.052, 0.022}, Clouds(x / 24, z / 24, 3, 47));
    ground = Mix(ground, needles, trees);

    // Mountains in the sun's way: a few long steps are enough for soft shadows.
    double light = 1;
    double step = 60;
    for (int i = 0; i < 13; ++i, step *= 1.42) {
        const Vec at = Vec{x, height + 4, z} + ToSun * step;
        light = std::min(light, Step(-0.055, 0.035, (at.y - Land(at.x, at.z)) / step));
    }
    const double facing = std::max(0.0, Dot(normal, ToSun)) * Mix(1.0, 0.75, trees);
    const double open = 0.55 + 0.45 * normal.y;
    return ground * (SunLight * (facing * light) + SkyLight * open);
}

using Row = std::vector<Vec>;

// Walks away from the eye along one column of the picture and fills upwards what comes into sight.
void PaintLand(std::vector<Row>& picture, std::vector<double>& shoreline, int column)
{
    const double across = (column - FineWidth / 2.0) / FocalLength;
    double top = Horizon + 40;
    double z = 260;
    for (int i = 0; i < 4189; ++i, z *= 1.0011) {
        const double x = across * z;
        double height = Land(x, z);
        if (height < 0) continue;
        const double reach = 12;
        const double steepness = std::abs(Land(x + reach, z) - height) / reach;
        const double trees =
            TreeCover(x, z, height, steepness) * Step(0.22, 0.45, Clouds(x / 260, z / 260, 4, 61));
        if (trees > 0.3 && z < 9000) {
            // Each tree a spike of its own, as wide as a tree.
            const double cell = 7;
            const int cx = static_cast<int>(std::floor(x / cell));
            const int cz = static_cast<int>(std::floor(z / (cell * 3)));
            const double size = 10 + 17 * Random(cx, cz, 3);
            const double off = std::abs(x / cell - cx - 0.5) * 2;
            height += trees * size * (1 - off * 0.92);
        }
        const double seen = Horizon - (height - EyeHeight) / z * FocalLength;
        if (seen >= top) continue;
        if (top > Horizon) shoreline[static_cast<size_t>(column)] = Horizon + EyeHeight / z * FocalLength;
        const double distance = std::hypot(x, z);
        Vec color = ShadeLand(x, z, height, trees, distance);
        const double haze =
            1 - std::exp(-distance / 34000 - 0.40 * std::exp(-height / 70) * Step(600, 7000, z));
        color = Mix(color, Haze(across), haze);
        const int from = std::max(0, static_cast<int>(std::ceil(seen)));
        for (int y = from; y < std::min<double>(std::ceil(top), FineHeight); ++y) {
            picture[static_cast<size_t>(y)][static_cast<size_t>(column)] = color;
        }
        top = seen;
    }
}

Vec Sample(const std::vector<Row>& picture, double x, double y)
{
    const auto row = static_cast<size_t>(std::clamp(y, 0.0, FineHeight - 1.0));
    const auto column = static_cast<size_t>(std::clamp(x, 0.0, FineWidth - 1.0));
    return picture[row][column];
}

// The mirror below the shore, roughened by small waves that stretch with nearness.
void PaintWater(std::vector<Row>& picture, const std::vector<double>& shoreline)
{
    for (int y = static_cast<int>(Horizon); y < FineHeight; ++y) {
        const double below = y - Horizon;
        if (below < 1) continue;
        const double z = EyeHeight / below * FocalLength;
        for (int x = 0; x < FineWidth; ++x) {
            const double shore = shoreline[static_cast<size_t>(x)];
            if (y < shore) continue;
            const double across = (x - FineWidth / 2.0) / FocalLength * z;
            const double breeze = 0.40 + 0.60 * Step(0.42, 0.62, Clouds(across / 60 + 3, z / 130, 4, 201));
            const double waves = Clouds(across / 1.7, z / 4.6, 4, 101) - 0.5 +
                                 0.7 * (Clouds(across / 9, z / 30, 3, 131) - 0.5);
            const double tilt = waves * breeze * (12 + 52 * Step(0, 0.40 * FineHeight, below));
            const double sway = (Clouds(across / 2.3 + 9, z / 5.5, 3, 151) - 0.5) * breeze * 12;
            const double mirrored = 2 * Horizon - y - std::abs(tilt) * 1.6 - tilt * 0.8;
            const Vec image = Sample(picture, x + sway, std::min(mirrored, Horizon - 1));
            const double steep = std::clamp(below / (0.4 * FineHeight), 0.0, 1.0);
            const double mirror = 0.90 - 0.42 * steep * steep + 0.10 * waves;
            const Vec depth = Mix({0.020, 0.062, 0.075}, {0.012, 0.040, 0.048}, steep);
            Vec color = image * Vec{0.93, 0.96, 0.97} * mirror + depth * (1 - mirror);
            // Fine mist where the water ends.
            color = Mix(color, Haze(0), 0.30 * std::exp(-(y - shore) / 26.0) * Step(300, 2500, z));
            picture[static_cast<size_t>(y)][static_cast<size_t>(x)] = color;
        }
    }
}

// Film: a soft shoulder, a little more color, darker corners and grain.
std::array<uint8_t, 3> Develop(Vec color, int x, int y)
{
    const double dx = (x - Width / 2.0) / Width;
    const double dy = (y - Height / 2.0) / Width;
    color = color * (0.66 * (1 - 0.62 * (dx * dx + dy * dy)));
    const double gray = 0.25 * color.x + 0.6 * color.y + 0.15 * color.z;
    color = Mix({gray, gray, gray}, color, 1.16);
    const double grain = (Random(x, y, 301) + Random(x, y, 302) - 1) * 0.010;
    std::array<uint8_t, 3> bytes{};
    const double channels[3] = {color.x, color.y, color.z};
    for (size_t i = 0; i < 3; ++i) {
        const double light = std::max(0.0, channels[i]);
        const double toned = light * (2.51 * light + 0.03) / (light * (2.43 * light + 0.59) + 0.14);
        const double coded = std::pow(std::clamp(toned, 0.0, 1.0), 1 / 2.2);
        bytes[i] = static_cast<uint8_t>(std::lround(255 * std::clamp(coded + grain, 0.0, 1.0)));
    }
    return bytes;
}

bool WriteJpeg(const char* path, const std::vector<Row>& picture)
{
    FILE* file = std::fopen(path, "wb");
    if (!file) return false;
    jpeg_compress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, file);
    jpeg.image_width = Width;
    jpeg.image_height = Height;
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 86, TRUE);
    jpeg.optimize_coding = TRUE;
    jpeg.density_unit = 1;
    jpeg.X_density = jpeg.Y_density = 300;
    jpeg_start_compress(&jpeg, TRUE);
    std::vector<uint8_t> line(Width * 3);
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            Vec sum;
            for (int i = 0; i < Oversampling * Oversampling; ++i) {
                const int row = y * Oversampling + i / Oversampling;
                const int column = x * Oversampling + i % Oversampling;
                sum = sum + picture[static_cast<size_t>(row)][static_cast<size_t>(column)];
            }
            const auto bytes = Develop(sum * (1.0 / (Oversampling * Oversampling)), x, y);
            std::copy(bytes.begin(), bytes.end(), line.begin() + x * 3);
        }
        JSAMPROW row = line.data();
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    return std::fclose(file) == 0;
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_lake FILE\n");
        return 1;
    }
    std::vector<Row> picture(FineHeight, Row(FineWidth));
    for (int y = 0; y < FineHeight; ++y) {
        for (int x = 0; x < FineWidth; ++x) {
            picture[static_cast<size_t>(y)][static_cast<size_t>(x)] =
                Sky((Horizon - y) / FocalLength, (x - FineWidth / 2.0) / FocalLength);
        }
    }
    std::vector<double> shoreline(FineWidth, Horizon);
    for (int x = 0; x < FineWidth; ++x) {
        PaintLand(picture, shoreline, x);
    }
    PaintWater(picture, shoreline);
    return WriteJpeg(argv[1], picture) ? 0 : 1;
}
