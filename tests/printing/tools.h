// Runs the installed tools that read what was printed.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace test {

// The output of a command.
inline std::string output_of(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>/dev/null").c_str(), "r"), pclose);
    std::string output;
    std::array<char, 4096> part;
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe.get()))
        output.append(part.data(), count);
    return output;
}

inline bool has_tool(const std::string& name) {
    return !output_of("command -v " + name).empty();
}

// The texts of a PDF file as one line without blanks and letter forms, so that line breaks do not matter.
inline std::string pdf_text(const std::filesystem::path& file) {
    QString text = QString::fromStdString(output_of("pdftotext -raw '" + file.string() + "' -"));
    QString plain;
    for (const QChar c : text.normalized(QString::NormalizationForm_KC)) {
        if (c.isLetterOrNumber() || c.isPunct() || c.isSymbol()) plain += c;
    }
    return plain.remove(QChar(0x0640)).toStdString();
}

// A text to look for, in the same form.
inline std::string plain(const std::string& text) {
    QString found;
    for (const QChar c : QString::fromStdString(text)) {
        if (c.isLetterOrNumber() || c.isPunct() || c.isSymbol()) found += c;
    }
    return found.remove(QChar(0x0640)).toStdString();
}

}  // namespace test

#define NEEDS_TOOL(name) \
    if (!test::has_tool(name)) GTEST_SKIP() << name << " is not installed"
