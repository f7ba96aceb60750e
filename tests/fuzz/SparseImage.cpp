#include "fuzz/SparseImage.h"

#include <algorithm>
#include <array>

namespace burnwick::test {

namespace {

// A piece is a byte that says where it lies, for EndOfPieces nothing more; its place in three bytes when that
// byte names none; the number of its bytes; and these.
constexpr std::array<std::size_t, 8> NamedPlaces{0,      12,     0x3000,  8064,
                                                 0xFEFF, 0xFFFF, 0x10000, 0x10000 + 8064};
constexpr unsigned EndOfPieces = 0xFF;
constexpr unsigned NoNamedPlace = 0xFE;
constexpr std::size_t PlaceBytes = 3;
constexpr std::size_t LongestPiece = 255;

void AppendNumber(Bytes& input, std::size_t number) {
    for (const unsigned shift : {16U, 8U, 0U}) {
        input.push_back(static_cast<std::byte>(number >> shift & 0xFFU));
    }
}

}  // namespace

void TakePieces(Input& input, Bytes& image) {
    while (!input.IsEmpty()) {
        const unsigned choice = input.TakeByte();
        if (choice == EndOfPieces) {
            return;
        }
        auto at = choice < NamedPlaces.size() ? NamedPlaces.at(choice)
                                              : static_cast<std::size_t>(input.TakeNumber(PlaceBytes));
        for (const std::byte value : input.TakeBytes(input.TakeByte())) {
            if (at < image.size()) {
                image[at++] = value;
            }
        }
    }
}

Bytes TakeSparseImage(Input& input) {
    Bytes image(input.TakeNumber(PlaceBytes) % (LongestSparseImage + 1));
    TakePieces(input, image);
    return image;
}

Bytes PiecesBetween(const Bytes& image, const Bytes& other) {
    Bytes input;
    for (std::size_t at = 0; at < image.size(); ++at) {
        if (image[at] == other[at]) {
            continue;
        }
        const auto end = std::min(other.size(), at + LongestPiece);
        auto last = at;
        for (auto place = at; place < end; ++place) {
            last = image[place] != other[place] ? place : last;
        }
        const auto count = last + 1 - at;
        input.push_back(std::byte{NoNamedPlace});
        AppendNumber(input, at);
        input.push_back(static_cast<std::byte>(count));
        const auto begin = other.begin() + static_cast<std::ptrdiff_t>(at);
        input.insert(input.end(), begin, begin + static_cast<std::ptrdiff_t>(count));
        at = last;
    }
    input.push_back(std::byte{EndOfPieces});
    return input;
}

Bytes SparseFrom(const Bytes& image) {
    Bytes input;
    AppendNumber(input, image.size());
    const Bytes pieces = PiecesBetween(Bytes(image.size()), image);
    input.insert(input.end(), pieces.begin(), pieces.end());
    return input;
}

}  // namespace burnwick::test
