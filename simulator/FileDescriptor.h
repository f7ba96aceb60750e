#pragma once

#include <unistd.h>

#include <utility>

namespace simulator {

// Owns a file descriptor.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : Descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : Descriptor_(std::exchange(other.Descriptor_, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor() {
        if (Descriptor_ >= 0) {
            close(Descriptor_);
        }
    }

    int Get() const { return Descriptor_; }

private:
    int Descriptor_;
};

}  // namespace simulator
