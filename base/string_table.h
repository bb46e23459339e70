// The program's table of numbered strings (catalogue file names, kind
// titles and the like). The rows are plain data in data/strings.txt, built
// into the program.
#pragma once

// The text of string `number`; "" when the table has no such row.
const char* StringText(int number);
