#include "reliability/Kinds.h"

#include <utility>

#include "support/SampleImages.h"

namespace burnwick::test {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t KiB = 1024;
constexpr std::uint32_t OldContents = 77;  // what a chip holds before, so that nothing looks erased

Kind Download(std::string name, Bytes image, std::size_t chipSize) {
    Kind kind;
    kind.Name = std::move(name);
    kind.Method = Method::Download;
    kind.Image = std::move(image);
    kind.Blocks = static_cast<int>((kind.Image.size() + BlockSize - 1) / BlockSize);
    kind.Unit.Flash = AnyBytes(chipSize, OldContents);
    kind.Unit.LastBlock = kind.Blocks - 1;
    return kind;
}

Bytes ImageOfFamily2(std::size_t size) {
    return ImageWith(size, 0x10000, {0xC0, 0xDE, 0x00, 0x02});
}

}  // namespace

Kind BootCode64KiB() {
    Kind kind = Download("64 KiB of family 1", AnyBytes(64 * KiB), 64 * KiB);
    kind.Unit.LastBlockLimit = 3s;
    return kind;
}

Kind UnmarkedImage() {
    return Download("256 KiB without a marker", AnyBytes(256 * KiB), 256 * KiB);
}

Kind ImageOfType2() {
    return Download("256 KiB of type 2", ImageWith(256 * KiB, 0x3000, {0xC0, 0xDE, 0x00, 0x01}), 256 * KiB);
}

Kind ImageWithIdentity() {
    constexpr std::size_t subModelAt = 73'601;
    Bytes image = ImageOfFamily2(256 * KiB);
    Put(image, 0, {0xBC, 0x0D, 0xE1, 0x22});
    Put(image, subModelAt, {30});
    Kind kind = Download("256 KiB of type 3", std::move(image), 256 * KiB);
    kind.Unit.Ident = '"';
    return kind;
}

Kind ImageForAnotherUnit() {
    Kind kind = ImageWithIdentity();
    kind.Name += " for another unit";
    kind.Unit.Ident = 'I';
    kind.Refusal = "The software is not compatible.";
    return kind;
}

Kind ImageOfOddLength() {
    constexpr std::size_t length = 70'001;
    Kind kind = Download("70,001 bytes of type 4", ImageWith(length, 0, {0xC0, 0xDE, 0x01, 0x49}), 128 * KiB);
    kind.LengthIsSent = true;
    kind.Unit.Ident = 'I';
    return kind;
}

Kind AnnouncedImage() {
    constexpr std::size_t length = 66'000;
    Kind kind =
        Download("66,000 bytes, announced", ImageWith(length, 0, {0xC0, 0xDE, 0x01, 0x57}), 128 * KiB);
    kind.LengthIsSent = true;
    kind.Unit.Announce = true;
    return kind;
}

Kind ImageThatNobodyAwaits() {
    Kind kind = AnnouncedImage();
    kind.Name += " to nobody";
    kind.Unit.Announce = false;
    kind.Refusal = "No response from the unit.";
    return kind;
}

Kind Family1Of1MiB() {
    Kind kind =
        Download("1 MiB of family 1", ImageWith(1024 * KiB, 0x10000, {0x02, 0x00, 0x9E, 0x02}), 1024 * KiB);
    kind.Unit.Ident = '{';
    kind.Unit.LastBlockLimit = 3s;
    return kind;
}

Kind UploadOf(int blocks, int chipKiB) {
    Kind kind;
    kind.Name = std::to_string(blocks) + " blocks of a chip of " + std::to_string(chipKiB) + " KiB";
    kind.Method = Method::Upload;
    kind.Blocks = blocks;
    kind.Unit.Flash = AnyBytes(static_cast<std::size_t>(chipKiB) * KiB, OldContents);
    kind.Unit.LastBlock = blocks - 1;
    return kind;
}

Kind UploadOfBootCode(int blocks, int chipKiB) {
    Kind kind = UploadOf(blocks, chipKiB);
    kind.Name += " with boot code";
    Put(kind.Unit.Flash, 0, {0xBC, 0x0D, 0xE1, 0x49});
    return kind;
}

Kind UploadFromSlowUnit(int blocks, int chipKiB) {
    Kind kind = UploadOf(blocks, chipKiB);
    kind.Name += " of a slow unit";
    kind.Unit.MaxBaud = 57600;
    return kind;
}

}  // namespace burnwick::test
