#include "image/SearchBuffer.h"

#include <algorithm>
#include <utility>

#include "image/ImageSource.h"

namespace burnwick::modBinFileInfo {

SearchBuffer::SearchBuffer(std::string bytes) : Bytes_(std::move(bytes)) {
    Bytes_.resize(std::min(Bytes_.size(), MostBytes));
}

std::int16_t SearchBuffer::FindText(std::string_view text) const {
    const auto found = Bytes_.find(text);
    return found != std::string::npos ? static_cast<std::int16_t>(found) : std::int16_t{0};
}

std::uint8_t SearchBuffer::ByteAt(std::size_t at) const {
    return at < Bytes_.size() ? ToByte(Bytes_[at]) : std::uint8_t{0};
}

std::string_view SearchBuffer::TextAt(std::size_t at, std::size_t most) const {
    return std::string_view(Bytes_).substr(std::min(at, Bytes_.size()), most);
}

std::string_view SearchBuffer::TextUntil(char end, std::size_t at, std::size_t most) const {
    const auto text = TextAt(at, most);
    return text.substr(0, text.find(end));
}

}  // namespace burnwick::modBinFileInfo
