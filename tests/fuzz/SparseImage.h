#pragma once

#include "fuzz/Input.h"
#include "platform/files/Bytes.h"

// Images are long and mostly of no interest. As an input one is its length, and the pieces of it that are not
// zeros: so what lies far from its beginning stays in reach of a short input.
namespace burnwick::test {

// Beyond this length nothing of an image is looked at in another way.
inline constexpr std::size_t LongestSparseImage = 0x30000;

// An image, and the rest of the input is left when its pieces are said to end.
Bytes TakeSparseImage(Input& input);

// Puts pieces in an image until they are said to end.
void TakePieces(Input& input, Bytes& image);

// The input that gives an image.
Bytes SparseFrom(const Bytes& image);

// The input that changes one image to another of its length.
Bytes PiecesBetween(const Bytes& image, const Bytes& other);

}  // namespace burnwick::test
