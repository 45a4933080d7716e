// Rows of a table of which none is ever cut in half, whatever the table's height.
#pragma once

class QTableView;

namespace ui {

// Gives the rows the height, at least `row` pixels, at which the table holds whole rows only. The pixels left
// over go to the headings, at least `headings` of them. Must be called whenever the table's size has changed.
void show_whole_rows(QTableView* table, int row, int headings);

}  // namespace ui
