// Rows of a table of which none is ever cut in half, whatever the table's height.
#pragma once

class QTableView;

namespace ui {

// Gives the rows the height, of at least `row` pixels, with which whole ones fill the table. The pixels that
// are left over go to the headings, which get at least `headings`. To be called whenever the table's size has
// changed.
void show_whole_rows(QTableView* table, int row, int headings);

}  // namespace ui
