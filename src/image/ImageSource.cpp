#include "image/ImageSource.h"

#include <algorithm>

namespace burnwick::modBinFileInfo {

std::string ImageSource::ReadAt(std::uint64_t offset, std::size_t count) {
    if (offset >= Length_) {
        return {};
    }
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(std::min(count, ChunkSize), Length_ - offset));
    if (Stream_ == nullptr) {
        const auto part = Bytes_.subspan(static_cast<std::size_t>(offset), wanted);
        return {reinterpret_cast<const char*>(part.data()), part.size()};
    }
    std::string bytes(wanted, '\0');
    Stream_->clear();
    Stream_->seekg(static_cast<std::streamoff>(offset));
    Stream_->read(bytes.data(), static_cast<std::streamsize>(wanted));
    bytes.resize(static_cast<std::size_t>(Stream_->gcount()));
    HasFailed_ = HasFailed_ || bytes.size() < wanted;
    return bytes;
}

}  // namespace burnwick::modBinFileInfo
