#include "shell/CommandLine.h"
#include "tests/support/TemporaryFolder.h"

namespace vistrel {
namespace {

CommandLine parse(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    return CommandLine::parse(arguments);
}

TEST(CommandLine, EveryOptionIsAcceptedInBothForms) {
    const CommandLine line = parse({"--site", "http://127.0.0.1:8080", "--device-root=/tmp/d",
                                    "--scale", "1.5", "--tour=/tmp/t", "--browser", "--careful",
                                    "--ads=http://127.0.0.1:81", "https://films.example/a?b=c"});
    EXPECT_EQ(line.action, CommandLine::Action::Run);
    EXPECT_EQ(line.site, "http://127.0.0.1:8080");
    EXPECT_EQ(line.adServer, "http://127.0.0.1:81");
    EXPECT_EQ(line.deviceRoot, "/tmp/d");
    EXPECT_EQ(line.scale, 1.5);
    EXPECT_EQ(line.tourDirectory, "/tmp/t");
    EXPECT_TRUE(line.serveToBrowser);
    EXPECT_TRUE(line.careful);
    EXPECT_EQ(line.openAddress, "https://films.example/a?b=c");
}

TEST(CommandLine, AMistakeIsReportedInOneLine) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--bogus"}, "--bogus"},
        {{"file.mp4"}, "file.mp4"},
        {{"http://a.example/", "http://b.example/"}, "http://b.example/"},
        {{"--browser=yes"}, "--browser=yes"},
        {{"--site"}, "needs a value"},
        {{"--site", "not an address"}, "not an address"},
        {{"--site=file:///etc/passwd"}, "http"},
        {{"--site=http://"}, "http"},
        {{"--ads=https://a.example"}, "https"},
        {{"--scale", "0"}, "'0'"},
        {{"--scale", "9"}, "'9'"},
        {{"--scale", "2x"}, "'2x'"},
        {{"--scale", "nan"}, "'nan'"},
        {{"--device-root="}, "directory"},
    };
    for (const auto& [words, mentions] : cases) {
        const CommandLine line = parse(words);
        EXPECT_EQ(line.action, CommandLine::Action::Refuse) << words.front();
        EXPECT_NE(line.refusal.find(mentions), std::string::npos) << line.refusal;
        EXPECT_EQ(line.refusal.find('\n'), std::string::npos);
    }
}

TEST(CommandLine, AFileThatExistsIsOpenedByItsAddress) {
    const support::TemporaryFolder folder;
    const std::string file = folder.put("A Film.mp4", "film");
    const std::string address = "file://" + folder.path("A%20Film.mp4");
    EXPECT_EQ(parse({folder.path("./A Film.mp4")}).openAddress, address);
    EXPECT_EQ(parse({address}).openAddress, address);
    EXPECT_EQ(parse({folder.path()}).action, CommandLine::Action::Refuse) << "a folder";
    std::filesystem::remove(file);
    EXPECT_EQ(parse({address}).action, CommandLine::Action::Refuse) << "gone";
}

TEST(CommandLine, HelpAndVersionComeBeforeTheRest) {
    EXPECT_EQ(parse({"--help", "--bogus"}).action, CommandLine::Action::ShowHelp);
    EXPECT_EQ(parse({"--version"}).action, CommandLine::Action::ShowVersion);
    EXPECT_EQ(parse({"--bogus", "--help"}).action, CommandLine::Action::Refuse);
}

}
}
