// A receipt printer that records what it is given.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "printing/receipt_printer.h"

namespace test {

class RememberedPrinter final : public printing::ReceiptPrinter {
  public:
    bool print(const printing::Receipt& receipt, printing::Form form) override {
        printed.emplace_back(receipt, form);
        if (on_print) on_print();
        return works;
    }
    bool prints_text() const override { return text; }

    std::vector<std::pair<printing::Receipt, printing::Form>> printed;
    std::function<void()> on_print;
    bool works = true;
    bool text = false;
};

}  // namespace test
