#include "image/TypeCodes.h"

#include <algorithm>
#include <array>

namespace burnwick::modBinFileInfo {

namespace {

struct TypeCode {
    std::string_view Digits;
    int Kind;  // 0: accepted, and no more is known
};

constexpr std::array<TypeCode, 15> TypeCodes{{
    {"02009E02", 0},
    {"C0DE0000", 0},
    {"BC0DE118", 0},
    {"BC0DE122", 0},
    {"BC0DE128", 0},
    {"BC0DE123", 0},
    {"C0DE0123", 0},
    {"BC0DE131", 5},
    {"C0DE0131", 5},
    {"BC0DE137", 7},
    {"C0DE0137", 7},
    {"BC0DE149", 8},
    {"C0DE0149", 8},
    {"BC0DE157", 9},
    {"C0DE0157", 9},
}};

constexpr std::size_t TypeCodeBytes = 4;

const TypeCode* FindTypeCode(std::string_view code) {
    const auto* found = std::find_if(TypeCodes.begin(), TypeCodes.end(),
                                     [code](const TypeCode& known) { return known.Digits == code; });
    return found != TypeCodes.end() ? &*found : nullptr;
}

}  // namespace

std::string HexDigits(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char character : bytes) {
        text += digits[ToByte(character) >> 4U];
        text += digits[ToByte(character) & 0xFU];
    }
    return text;
}

std::string TypeCodeOf(ImageSource& source) {
    return HexDigits(source.ReadAt(0, TypeCodeBytes));
}

bool IsKnownTypeCode(std::string_view code) {
    return FindTypeCode(code) != nullptr;
}

int KindOfTypeCode(std::string_view code) {
    const TypeCode* known = FindTypeCode(code);
    return known != nullptr ? known->Kind : 0;
}

bool IsBootTypeCode(std::string_view code) {
    return code.find("BC0D") != std::string_view::npos;
}

bool IsImage(ImageSource& source) {
    return source.Length() == SmallImage || IsKnownTypeCode(TypeCodeOf(source));
}

}  // namespace burnwick::modBinFileInfo
