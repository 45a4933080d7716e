// What a shop cannot take, and why.
#pragma once

#include <stdexcept>
#include <string>

namespace shop {

// what() says in English what is wrong and what to do, for tools; told() in Arabic, for the office. Nothing
// was changed, or nothing is left half done.
class Refused : public std::runtime_error {
  public:
    explicit Refused(const std::string& cause, std::string told = {})
        : std::runtime_error(cause), told_(std::move(told)) {}
    const std::string& told() const { return told_; }

  private:
    std::string told_;
};

}  // namespace shop
