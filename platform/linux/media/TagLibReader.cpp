#include "platform/linux/media/TagLibReader.h"

#include "platform/linux/media/MpegDuration.h"

#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/tstring.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

host::Failure failureOf(int code) {
    return {code, std::strerror(code)};
}

/// The library drops the whole text when it contains an unpaired surrogate.
std::string utf8Of(TagLib::String text) {
    const auto isHigh = [](wchar_t unit) {
        return unit >= 0xD800 && unit < 0xDC00;
    };
    const auto isLow = [](wchar_t unit) {
        return unit >= 0xDC00 && unit < 0xE000;
    };
    for (unsigned i = 0; i < text.size(); ++i)
        if (isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1]))
            ++i;
        else if (isHigh(text[i]) || isLow(text[i]))
            text[i] = 0xFFFD;
    return text.to8Bit(true);
}

/// Music in other formats with an MPEG file's name.
bool isForeign(BufferedFile& file) {
    std::array<char, 8> start{};
    if (file.read(0, start.size(), start.data()) != start.size())
        return false;
    const std::string_view bytes(start.data(), start.size());
    return bytes.starts_with("OggS") || bytes.starts_with("fLaC") || bytes.starts_with("RIFF") ||
           bytes.substr(4) == "ftyp";
}

double durationOf(TagLib::FileRef& file, const std::string& path) {
    const TagLib::AudioProperties* properties = file.audioProperties();
    if (!properties)
        return 0;
    const double said = properties->lengthInMilliseconds() / 1000.0;
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file.file());
    if (!mpeg || !mpeg->audioProperties() || mpeg->audioProperties()->xingHeader())
        return said;
    // The library assumes that all frames have the first one's bit rate.
    const std::int64_t first = mpeg->firstFrameOffset();
    std::int64_t end = mpeg->length();
    if (mpeg->hasID3v1Tag())
        end -= 128;
    if (first < 0 || !MpegDuration::variesInRate(path, first, end))
        return said;
    return MpegDuration::byWalking(path, first, end);
}

}

host::Result<std::unique_ptr<host::AudioFileReader>>
TagLibReader::open(const std::string& machinePath) {
    std::unique_ptr<TagLibReader> reader(new TagLibReader);
    if (const int code = reader->bytes_.open(machinePath))
        return failureOf(code);
    if (isForeign(reader->bytes_))
        reader->bytes_.forgetName();
    TagLib::FileRef file(&reader->bytes_, true, TagLib::AudioProperties::Average);
    if (file.isNull())
        return host::Failure{EINVAL, "The file contains no sound."};
    Info& info = reader->info_;
    info.duration = durationOf(file, machinePath);
    if (info.duration <= 0)
        return host::Failure{EINVAL, "The file contains no sound."};
    if (const TagLib::Tag* tag = file.tag()) {
        info.title = utf8Of(tag->title());
        info.artist = utf8Of(tag->artist());
        info.album = utf8Of(tag->album());
    }
    return std::unique_ptr<host::AudioFileReader>(std::move(reader));
}

host::Result<std::vector<std::byte>> TagLibReader::id3Tag() {
    std::vector<std::byte> tag;
    // ID3v2.4, 3.1: "ID3", two version bytes, flags, then the size in four bytes of seven bits.
    std::array<char, 10> header{};
    if (bytes_.read(0, header.size(), header.data()) != header.size() ||
        std::memcmp(header.data(), "ID3", 3) != 0)
        return tag;
    const bool hasFooter = header[3] >= 4 && (header[5] & 0x10);
    std::size_t size = header.size() + (hasFooter ? header.size() : 0);
    size += static_cast<std::size_t>((header[6] & 0x7F) << 21 | (header[7] & 0x7F) << 14 |
                                     (header[8] & 0x7F) << 7 | (header[9] & 0x7F));
    tag.resize(std::min(size, static_cast<std::size_t>(bytes_.length())));
    tag.resize(bytes_.read(0, tag.size(), reinterpret_cast<char*>(tag.data())));
    return tag;
}

}
