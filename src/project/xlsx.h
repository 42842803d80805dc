// Spreadsheet workbooks in the Office Open XML format (.xlsx), as far as the
// project's export and import need them: sheets of rows of text and number
// cells, written so that LibreOffice Calc and Excel open them, and read back
// from what either of them saves (shared or inline strings, numbers,
// compressed or stored parts). Compression is zlib's.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tarvokin {

struct XlsxCell {
    std::string text;    // a string, or the number as text
    bool number = false;
};

struct XlsxSheet {
    std::string name;
    std::vector<std::vector<XlsxCell>> rows;  // row 1 first, column A first
};

struct XlsxWorkbook {
    std::vector<XlsxSheet> sheets;
    const XlsxSheet* find(const std::string& name) const;
};

// The bytes of an .xlsx file.
std::string XlsxBytes(const XlsxWorkbook& book);

// Reads a workbook; an empty result and `error` set when the file is not a
// readable workbook (not a zip, a damaged part, no workbook inside).
std::optional<XlsxWorkbook> ReadXlsx(const std::filesystem::path& file, std::string& error);
std::optional<XlsxWorkbook> ParseXlsx(const std::string& bytes, std::string& error);

// "A1" style reference of a zero-based column and row.
std::string CellReference(int column, int row);

}  // namespace tarvokin
