// tallvex-admin show-receipt: draws a text receipt's bytes as a picture of the paper.
#include <CLI/CLI.hpp>
#include <QImage>
#include <memory>

#include "admin/qt_program.h"
#include "admin/tool.h"
#include "common/files.h"
#include "printing/pages/paper_picture.h"

namespace admin {

namespace {

namespace fs = std::filesystem;

struct ReceiptOptions {
    std::string file;
    std::string output;
    int width = 0;
};

// Far longer than any receipt; a larger file was named by mistake.
constexpr std::size_t longest_receipt = 4 * 1024 * 1024;

std::string bytes_of(const fs::path& file) {
    const std::string bytes = common::read_file(file, longest_receipt);
    if (bytes.empty()) throw Refused(file.string() + ": nothing was printed in it");
    return bytes;
}

void run(const ReceiptOptions& options, Tool& tool) {
    const std::string bytes = bytes_of(tool.folder / options.file);
    const fs::path target = tool.folder / (options.output.empty() ? options.file + ".png" : options.output);
    const QtProgram program;
    const QImage paper = printing::pages::paper_picture(bytes, options.width);
    if (!paper.save(QString::fromStdString(target.string()), "PNG"))
        throw Refused(target.string() + ": cannot be written");
    tool.out << "picture " << target.string() << ": " << paper.width() << " x " << paper.height()
             << " dots\n";
}

}  // namespace

void add_show_receipt(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<ReceiptOptions>();
    CLI::App* command = program.add_subcommand(
        "show-receipt", tool.help("Draws a text receipt as its paper would look, as a PNG picture",
                                  "يرسم بونا نصيا كما يظهر على الورق، في صورة PNG"));
    command
        ->add_option("file", options->file,
                     tool.help("The bytes that were sent to the printer", "ملف ما أرسل إلى الطابعة"))
        ->required();
    command->add_option(
        "--output", options->output,
        tool.help("The picture to write; without it FILE.png", "الصورة التي تكتب، وبدونه FILE.png"));
    command
        ->add_option("--width", options->width,
                     tool.help("Characters in a line; without it the width is read off the receipt",
                               "عدد حروف السطر، وبدونه يعرف العرض من البون"))
        ->check(CLI::Range(20, 80));
    command->callback([options, &tool] { run(*options, tool); });
}

}  // namespace admin
