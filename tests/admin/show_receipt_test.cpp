// Text receipts drawn as pictures of their paper.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include "admin/workbench.h"
#include "support/data_file.h"

namespace {

using test::Workbench;
using testing::HasSubstr;

std::filesystem::path sample(const std::string& name) {
    return test::tests_folder() / "printing" / "data" / name;
}

// How many dots of a strip of the picture are printed on.
int printed_dots(const QImage& paper, int from_row, int to_row) {
    int dots = 0;
    for (int y = from_row; y < std::min(to_row, paper.height()); ++y) {
        for (int x = 0; x < paper.width(); ++x)
            dots += qGray(paper.pixel(x, y)) < 100 ? 1 : 0;
    }
    return dots;
}

TEST(ShowReceipt, DrawsWhatWasPrinted) {
    Workbench bench;
    for (const auto& [name, columns] :
         {std::pair{"sale_full_48.receipt", 48}, std::pair{"sale_reprint_40.receipt", 40}}) {
        SCOPED_TRACE(name);
        std::filesystem::copy_file(sample(name), bench.file("bon"),
                                   std::filesystem::copy_options::overwrite_existing);
        const auto run = bench.run({"show-receipt", "bon"});
        ASSERT_EQ(run.code, 0) << run.err;
        const QImage paper(QString::fromStdString(bench.file("bon.png").string()));
        ASSERT_FALSE(paper.isNull());
        // As wide as its characters, and the longer roll is the wider one.
        EXPECT_GT(paper.width(), columns * 10);
        EXPECT_LT(paper.width(), columns * 14);
        EXPECT_GT(printed_dots(paper, 0, paper.height() / 2), 500);
        EXPECT_GT(printed_dots(paper, paper.height() / 2, paper.height()), 500);
    }
    const auto run = bench.run({"show-receipt", "bon", "--output", "other.png", "--width", "60"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_GT(QImage(QString::fromStdString(bench.file("other.png").string())).width(), 600);
}

TEST(ShowReceipt, BadFilesAreRefusedOrDrawnAsTheyAre) {
    Workbench bench;
    std::ofstream(bench.file("empty"));
    std::ofstream(bench.file("large")) << std::string(5 * 1024 * 1024, 'x');
    const std::vector<std::pair<std::vector<std::string>, std::string>> refused = {
        {{"show-receipt", "missing"}, "No such file"},
        {{"show-receipt", "."}, "not a regular file"},
        {{"show-receipt", "empty"}, "nothing was printed"},
        {{"show-receipt", "large"}, "too large"},
    };
    for (const auto& [line, words] : refused) {
        const auto run = bench.run(line);
        EXPECT_EQ(run.code, 1) << line[1];
        EXPECT_THAT(run.err, HasSubstr(words)) << line[1];
    }
    std::filesystem::copy_file(sample("sale_full_48.receipt"), bench.file("bon"));
    EXPECT_EQ(bench.run({"show-receipt", "bon", "--output", "no/such/folder.png"}).code, 1);
    EXPECT_EQ(bench.run({"show-receipt", "bon", "--width", "0"}).code, 2);
    // Any bytes can be drawn.
    std::string noise;
    for (int byte = 0; byte < 4096; ++byte)
        noise += static_cast<char>(byte * 7919 % 256);
    std::ofstream(bench.file("noise"), std::ios::binary) << noise;
    EXPECT_EQ(bench.run({"show-receipt", "noise"}).code, 0);
}

}  // namespace
