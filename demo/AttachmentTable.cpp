#include "demo/AttachmentTable.h"

#include <vector>

namespace vistrel::demo {
namespace {
std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int count = 0; count < times; ++count)
        all += text;
    return all;
}

const std::vector<Attachment>& table() {
    static const std::vector<Attachment> rows = {
        {"A plain token", "attachment; filename=plain.mp3"},
        {"Quoted", R"(attachment; filename="Quoted Name.mp3")"},
        {"Quoted with escapes", R"(attachment; filename="A \"quoted\" \\ name.mp3")"},
        {"Quoted with a semicolon", R"(attachment; filename="one; two=three.mp3")"},
        {"Extended, UTF-8", "attachment; filename*=UTF-8''Gr%C3%BC%C3%9Fe%20aus%20K%C3%B6ln.mp3"},
        {"Extended, Latin-1", "attachment; filename*=ISO-8859-1'de'Gr%FC%DFe.mp3"},
        {"Both forms, extended wins",
         R"(attachment; filename="plain.mp3"; filename*=UTF-8''%E2%82%AC%20rates.mp3)"},
        {"Both forms, extended first",
         R"(attachment; filename*=UTF-8''na%C3%AFve.mp3; filename="naive.mp3")"},
        {"Extended with a bad escape",
         R"(attachment; filename="good.mp3"; filename*=UTF-8''b%zz.mp3)"},
        {"Extended, bytes that are not UTF-8", "attachment; filename*=UTF-8''bad%FF%FEbytes.mp3"},
        {"Raw UTF-8 in quotes", "attachment; filename=\"Über uns.mp3\""},
        {"Raw Latin-1 in quotes", "attachment; filename=\"\xdc"
                                  "ber uns.mp3\""},
        {"Names in capitals", R"(ATTACHMENT; FILENAME="Capitals.mp3")"},
        {"Spaces around everything", R"(attachment ;  filename = "spaced out.mp3" )"},
        {"Inline with a name", R"(inline; filename="inline.mp4")", "harbour-at-dawn.mp4"},
        {"Out of the folder", R"(attachment; filename="../../etc/passwd")"},
        {"Out of the folder, escaped", "attachment; filename*=UTF-8''..%2F..%2Fetc%2Fpasswd.mp3"},
        {"Out of the folder, backslashes", R"(attachment; filename="..\\..\\boot.mp3")"},
        {"Absolute path", R"(attachment; filename="/var/mobile/Library/Downloads/abs.mp3")"},
        {"Two dots", R"(attachment; filename="..")"},
        {"One dot", R"(attachment; filename=".")"},
        {"Only a separator", R"(attachment; filename="/")"},
        {"Hidden", R"(attachment; filename=".hidden.mp4")", "harbour-at-dawn.mp4"},
        {"Many leading dots", R"(attachment; filename="...many.mp3")"},
        {"Control characters", "attachment; filename=\"con\x01tr\x07ol\x1b[31m\x7f.mp3\""},
        {"Escaped line break and zero", "attachment; filename*=UTF-8''line%0D%0Abreak%00zero.mp3"},
        {"Direction override", "attachment; filename*=UTF-8''song%E2%80%AE3pm.exe"},
        {"Direction isolates and marks",
         "attachment; filename*=UTF-8''%E2%81%A6a%E2%81%A9%E2%80%8Fb%D8%9C.mp3"},
        {"300 bytes", "attachment; filename=\"" + repeated("0123456789", 30) + ".mp3\""},
        {"300 bytes of two-byte letters",
         "attachment; filename*=UTF-8''" + repeated("%C3%B6", 150) + ".mp3"},
        {"A long extension", "attachment; filename=\"name." + repeated("x", 300) + "\""},
        {"No extension", R"(attachment; filename="no extension")"},
        {"An extension that does not fit", R"(attachment; filename="song.exe")"},
        {"A video's extension in capitals", R"(attachment; filename="FILM.MP4")",
         "harbour-at-dawn.mp4"},
        {"Two extensions", R"(attachment; filename="song.mp3.html")"},
        {"Trailing dots and spaces", R"(attachment; filename="song.mp3. . ")"},
        {"Empty name", R"(attachment; filename="")"},
        {"No name", "attachment"},
        {"Quote never closed", R"(attachment; filename="open.mp3)"},
        {"Two names", R"(attachment; filename="first.mp3"; filename="second.mp3")"},
        {"Percent signs in quotes", R"(attachment; filename="100%25 sure.mp3")"},
        {"No header, name in the address", "", "short-signal.mp3", "address name.mp3"},
        {"No header, separators in the address", "", "short-signal.mp3", "up/../down.mp3"},
        {"No header, dots in the address", "", "short-signal.mp3", "../"},
        {"No header, no extension", "", "night-tram.m4v", "tram"},
        {"No header, umlauts in the address", "", "gruesse-aus-koeln.mp3", "Grüße.mp3"},
    };
    return rows;
}
}

std::span<const Attachment> attachments() {
    return table();
}
}
