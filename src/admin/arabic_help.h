// Formats the Arabic help for a terminal: commands and options at the beginning of their lines, their meaning
// below them, from right to left.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace admin {

class ArabicHelp : public CLI::Formatter {
  public:
    ArabicHelp();
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_description(const CLI::App* app) const override;
    std::string make_footer(const CLI::App* app) const override;
    std::string make_group(std::string group, bool is_positional,
                           std::vector<const CLI::Option*> options) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_option(const CLI::Option* option, bool is_positional) const override;
};

}  // namespace admin
