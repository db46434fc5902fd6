// Sizes of pictures in files.
#pragma once
#include <string>
#include <string_view>

namespace quom {

struct PictureSize {
    double width = 160, height = 110;  // [mm]
    double dpi = 300;                  // of PNG and BMP
    bool operator==(const PictureSize&) const = default;
};

// "png", "bmp": a picture of pixels.
bool has_pixels(std::string_view format);
// Why no picture has this size, as a sentence: a side outside 1 to 5000 mm; of pixels a resolution outside 10
// to 2400 dpi, more than 200 million pixels. Empty when one may.
std::string size_fault(const PictureSize& size, bool pixels);

}  // namespace quom
