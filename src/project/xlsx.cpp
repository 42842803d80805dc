#include "project/xlsx.h"

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

namespace tarvokin {

namespace {

// ---- zip container -----------------------------------------------------------------

void put16(std::string& b, uint32_t v) {
    b.push_back(static_cast<char>(v & 0xff));
    b.push_back(static_cast<char>((v >> 8) & 0xff));
}
void put32(std::string& b, uint32_t v) {
    put16(b, v & 0xffff);
    put16(b, v >> 16);
}
uint32_t get16(const std::string& b, size_t at) {
    return static_cast<uint8_t>(b[at]) | (static_cast<uint32_t>(static_cast<uint8_t>(b[at + 1])) << 8);
}
uint32_t get32(const std::string& b, size_t at) { return get16(b, at) | (get16(b, at + 2) << 16); }

std::string deflateRaw(const std::string& in) {
    z_stream z{};
    // Raw deflate (negative window bits): zip entries carry no zlib header.
    if (deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK) return {};
    std::string out(deflateBound(&z, static_cast<uLong>(in.size())), '\0');
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.data()));
    z.avail_in = static_cast<uInt>(in.size());
    z.next_out = reinterpret_cast<Bytef*>(out.data());
    z.avail_out = static_cast<uInt>(out.size());
    deflate(&z, Z_FINISH);
    out.resize(z.total_out);
    deflateEnd(&z);
    return out;
}

bool inflateRaw(const std::string& in, size_t expected, std::string& out) {
    z_stream z{};
    if (inflateInit2(&z, -15) != Z_OK) return false;
    out.assign(expected, '\0');
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.data()));
    z.avail_in = static_cast<uInt>(in.size());
    z.next_out = reinterpret_cast<Bytef*>(out.data());
    z.avail_out = static_cast<uInt>(out.size());
    const int rc = inflate(&z, Z_FINISH);
    const bool ok = rc == Z_STREAM_END && z.total_out == expected;
    inflateEnd(&z);
    return ok;
}

struct ZipEntry {
    std::string name, data;
};

std::string zipBytes(const std::vector<ZipEntry>& entries) {
    std::string out, central;
    // 1 January 2020, so that every export of the same design is the same file.
    const uint32_t dosTime = 0, dosDate = ((2020 - 1980) << 9) | (1 << 5) | 1;
    for (const ZipEntry& e : entries) {
        const std::string packed = deflateRaw(e.data);
        const uint32_t crc = crc32(0L, reinterpret_cast<const Bytef*>(e.data.data()), static_cast<uInt>(e.data.size()));
        const uint32_t offset = static_cast<uint32_t>(out.size());
        put32(out, 0x04034b50);
        put16(out, 20);
        put16(out, 0);
        put16(out, 8);
        put16(out, dosTime);
        put16(out, dosDate);
        put32(out, crc);
        put32(out, static_cast<uint32_t>(packed.size()));
        put32(out, static_cast<uint32_t>(e.data.size()));
        put16(out, static_cast<uint32_t>(e.name.size()));
        put16(out, 0);
        out += e.name;
        out += packed;

        put32(central, 0x02014b50);
        put16(central, 20);
        put16(central, 20);
        put16(central, 0);
        put16(central, 8);
        put16(central, dosTime);
        put16(central, dosDate);
        put32(central, crc);
        put32(central, static_cast<uint32_t>(packed.size()));
        put32(central, static_cast<uint32_t>(e.data.size()));
        put16(central, static_cast<uint32_t>(e.name.size()));
        put16(central, 0);
        put16(central, 0);
        put16(central, 0);
        put16(central, 0);
        put32(central, 0);
        put32(central, offset);
        central += e.name;
    }
    const uint32_t centralAt = static_cast<uint32_t>(out.size());
    out += central;
    put32(out, 0x06054b50);
    put16(out, 0);
    put16(out, 0);
    put16(out, static_cast<uint32_t>(entries.size()));
    put16(out, static_cast<uint32_t>(entries.size()));
    put32(out, static_cast<uint32_t>(central.size()));
    put32(out, centralAt);
    put16(out, 0);
    return out;
}

bool unzip(const std::string& b, std::map<std::string, std::string>& parts, std::string& error) {
    // The end record lies in the last 64 KiB + 22 bytes (its comment at most 64 KiB).
    if (b.size() < 22) {
        error = "fichier trop court pour un classeur";
        return false;
    }
    size_t eocd = std::string::npos;
    const size_t stop = b.size() > 65557 ? b.size() - 65557 : 0;
    for (size_t i = b.size() - 22 + 1; i-- > stop;) {
        if (get32(b, i) == 0x06054b50) {
            eocd = i;
            break;
        }
    }
    if (eocd == std::string::npos) {
        error = "ce n'est pas un classeur (archive zip introuvable)";
        return false;
    }
    const uint32_t count = get16(b, eocd + 10);
    size_t at = get32(b, eocd + 16);
    for (uint32_t n = 0; n < count; ++n) {
        if (at + 46 > b.size() || get32(b, at) != 0x02014b50) {
            error = "classeur endommagé (répertoire de l'archive)";
            return false;
        }
        const uint32_t method = get16(b, at + 10);
        const uint32_t packedSize = get32(b, at + 20), size = get32(b, at + 24);
        const uint32_t nameLen = get16(b, at + 28), extraLen = get16(b, at + 30), commentLen = get16(b, at + 32);
        const uint32_t local = get32(b, at + 42);
        if (at + 46 + nameLen > b.size() || local + 30 > b.size() || get32(b, local) != 0x04034b50) {
            error = "classeur endommagé (entrée de l'archive)";
            return false;
        }
        const std::string name = b.substr(at + 46, nameLen);
        const size_t dataAt = local + 30 + get16(b, local + 26) + get16(b, local + 28);
        if (dataAt + packedSize > b.size() || size > (1u << 28)) {
            error = "classeur endommagé (" + name + " tronqué)";
            return false;
        }
        const std::string packed = b.substr(dataAt, packedSize);
        std::string data;
        if (method == 0) {
            data = packed;
        } else if (method != 8 || !inflateRaw(packed, size, data)) {
            error = "classeur endommagé (" + name + " illisible)";
            return false;
        }
        parts[name] = std::move(data);
        at += 46 + nameLen + extraLen + commentLen;
    }
    return true;
}

// ---- XML -------------------------------------------------------------------------

std::string escapeXml(const std::string& s) {
    std::string o;
    for (char c : s) {
        switch (c) {
            case '&': o += "&amp;"; break;
            case '<': o += "&lt;"; break;
            case '>': o += "&gt;"; break;
            case '"': o += "&quot;"; break;
            default:
                // Control characters have no place in a cell's XML.
                if (static_cast<unsigned char>(c) >= 32 || c == '\t' || c == '\n') o += c;
        }
    }
    return o;
}

void appendUtf8(std::string& o, uint32_t cp) {
    if (cp < 0x80) {
        o += static_cast<char>(cp);
    } else if (cp < 0x800) {
        o += static_cast<char>(0xc0 | (cp >> 6));
        o += static_cast<char>(0x80 | (cp & 0x3f));
    } else if (cp < 0x10000) {
        o += static_cast<char>(0xe0 | (cp >> 12));
        o += static_cast<char>(0x80 | ((cp >> 6) & 0x3f));
        o += static_cast<char>(0x80 | (cp & 0x3f));
    } else {
        o += static_cast<char>(0xf0 | (cp >> 18));
        o += static_cast<char>(0x80 | ((cp >> 12) & 0x3f));
        o += static_cast<char>(0x80 | ((cp >> 6) & 0x3f));
        o += static_cast<char>(0x80 | (cp & 0x3f));
    }
}

std::string unescapeXml(const std::string& s) {
    std::string o;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '&') {
            o += s[i];
            continue;
        }
        const size_t semi = s.find(';', i);
        if (semi == std::string::npos) {
            o += s[i];
            continue;
        }
        const std::string ent = s.substr(i + 1, semi - i - 1);
        if (ent == "amp") o += '&';
        else if (ent == "lt") o += '<';
        else if (ent == "gt") o += '>';
        else if (ent == "quot") o += '"';
        else if (ent == "apos") o += '\'';
        else if (!ent.empty() && ent[0] == '#') {
            try {
                const uint32_t cp = ent.size() > 1 && (ent[1] == 'x' || ent[1] == 'X')
                                        ? static_cast<uint32_t>(std::stoul(ent.substr(2), nullptr, 16))
                                        : static_cast<uint32_t>(std::stoul(ent.substr(1)));
                appendUtf8(o, cp);
            } catch (const std::exception&) {
                o += s.substr(i, semi - i + 1);
            }
        } else {
            o += s.substr(i, semi - i + 1);
        }
        i = semi;
    }
    return o;
}

// One tag of a document: its name without namespace prefix, its attributes,
// whether it opens, closes or does both, and the text that follows it.
struct Tag {
    std::string name;
    std::map<std::string, std::string> attrs;
    bool closing = false, selfClosing = false;
    std::string textAfter;
};

std::vector<Tag> tags(const std::string& xml) {
    std::vector<Tag> out;
    size_t i = xml.find('<');
    while (i != std::string::npos) {
        const size_t end = xml.find('>', i);
        if (end == std::string::npos) break;
        std::string body = xml.substr(i + 1, end - i - 1);
        const size_t next = xml.find('<', end);
        if (!body.empty() && body[0] != '?' && body[0] != '!') {
            Tag t;
            if (body[0] == '/') {
                t.closing = true;
                body.erase(0, 1);
            }
            if (!body.empty() && body.back() == '/') {
                t.selfClosing = true;
                body.pop_back();
            }
            size_t p = body.find_first_of(" \t\r\n");
            t.name = body.substr(0, p);
            const size_t colon = t.name.find(':');
            if (colon != std::string::npos) t.name = t.name.substr(colon + 1);
            while (p != std::string::npos && p < body.size()) {
                const size_t eq = body.find('=', p);
                if (eq == std::string::npos) break;
                std::string key = body.substr(p, eq - p);
                key.erase(0, key.find_first_not_of(" \t\r\n"));
                key.erase(key.find_last_not_of(" \t\r\n") + 1);
                const size_t q = body.find_first_of("\"'", eq);
                if (q == std::string::npos) break;
                const size_t qe = body.find(body[q], q + 1);
                if (qe == std::string::npos) break;
                t.attrs[key] = unescapeXml(body.substr(q + 1, qe - q - 1));
                p = qe + 1;
            }
            t.textAfter = unescapeXml(xml.substr(end + 1, (next == std::string::npos ? xml.size() : next) - end - 1));
            out.push_back(std::move(t));
        }
        i = next;
    }
    return out;
}

// Column of an "A1" reference, zero-based; -1 when it has none.
int columnOf(const std::string& ref) {
    int c = 0;
    size_t i = 0;
    for (; i < ref.size() && ref[i] >= 'A' && ref[i] <= 'Z'; ++i) c = c * 26 + (ref[i] - 'A' + 1);
    return i == 0 ? -1 : c - 1;
}
int rowOf(const std::string& ref) {
    size_t i = 0;
    while (i < ref.size() && ref[i] >= 'A' && ref[i] <= 'Z') ++i;
    try {
        return std::stoi(ref.substr(i)) - 1;
    } catch (const std::exception&) {
        return -1;
    }
}

std::string sheetXml(const XlsxSheet& s) {
    std::ostringstream o;
    o << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
         "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
         "<cols><col min=\"1\" max=\"1\" width=\"28\" customWidth=\"1\"/><col min=\"2\" max=\"2\" width=\"26\" "
         "customWidth=\"1\"/><col min=\"3\" max=\"30\" width=\"14\" customWidth=\"1\"/></cols><sheetData>";
    for (size_t r = 0; r < s.rows.size(); ++r) {
        o << "<row r=\"" << r + 1 << "\">";
        for (size_t c = 0; c < s.rows[r].size(); ++c) {
            const XlsxCell& cell = s.rows[r][c];
            const std::string ref = CellReference(static_cast<int>(c), static_cast<int>(r));
            if (cell.number) o << "<c r=\"" << ref << "\"><v>" << escapeXml(cell.text) << "</v></c>";
            else if (!cell.text.empty())
                o << "<c r=\"" << ref << "\" t=\"inlineStr\"><is><t xml:space=\"preserve\">" << escapeXml(cell.text)
                  << "</t></is></c>";
        }
        o << "</row>";
    }
    o << "</sheetData></worksheet>";
    return o.str();
}

}  // namespace

const XlsxSheet* XlsxWorkbook::find(const std::string& name) const {
    for (const XlsxSheet& s : sheets)
        if (s.name == name) return &s;
    return nullptr;
}

std::string CellReference(int column, int row) {
    std::string letters;
    for (int c = column + 1; c > 0; c = (c - 1) / 26) letters.insert(letters.begin(), static_cast<char>('A' + (c - 1) % 26));
    return letters + std::to_string(row + 1);
}

std::string XlsxBytes(const XlsxWorkbook& book) {
    std::vector<ZipEntry> parts;
    std::ostringstream types, wbXml, rels;
    types << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
             "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
             "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
             "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
             "<Override PartName=\"/xl/workbook.xml\" "
             "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
             "<Override PartName=\"/xl/styles.xml\" "
             "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>";
    wbXml << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
             "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
             "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>";
    rels << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
            "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    for (size_t i = 0; i < book.sheets.size(); ++i) {
        const std::string n = std::to_string(i + 1);
        types << "<Override PartName=\"/xl/worksheets/sheet" << n
              << ".xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
        wbXml << "<sheet name=\"" << escapeXml(book.sheets[i].name) << "\" sheetId=\"" << n << "\" r:id=\"rId" << n
              << "\"/>";
        rels << "<Relationship Id=\"rId" << n
             << "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
                "Target=\"worksheets/sheet"
             << n << ".xml\"/>";
    }
    const std::string stylesId = "rId" + std::to_string(book.sheets.size() + 1);
    rels << "<Relationship Id=\"" << stylesId
         << "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
            "Target=\"styles.xml\"/></Relationships>";
    types << "</Types>";
    wbXml << "</sheets></workbook>";
    parts.push_back({"[Content_Types].xml", types.str()});
    parts.push_back({"_rels/.rels",
                     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                     "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                     "<Relationship Id=\"rId1\" "
                     "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
                     "Target=\"xl/workbook.xml\"/></Relationships>"});
    parts.push_back({"xl/workbook.xml", wbXml.str()});
    parts.push_back({"xl/_rels/workbook.xml.rels", rels.str()});
    parts.push_back({"xl/styles.xml",
                     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                     "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
                     "<fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
                     "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
                     "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
                     "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
                     "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
                     "<cellXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/></cellXfs>"
                     "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
                     "</styleSheet>"});
    for (size_t i = 0; i < book.sheets.size(); ++i)
        parts.push_back({"xl/worksheets/sheet" + std::to_string(i + 1) + ".xml", sheetXml(book.sheets[i])});
    return zipBytes(parts);
}

std::optional<XlsxWorkbook> ReadXlsx(const std::filesystem::path& file, std::string& error) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = "impossible de lire " + file.string();
        return std::nullopt;
    }
    std::ostringstream b;
    b << in.rdbuf();
    return ParseXlsx(b.str(), error);
}

std::optional<XlsxWorkbook> ParseXlsx(const std::string& bytes, std::string& error) {
    std::map<std::string, std::string> parts;
    if (!unzip(bytes, parts, error)) return std::nullopt;
    auto wbIt = parts.find("xl/workbook.xml");
    if (wbIt == parts.end()) {
        error = "ce n'est pas un classeur (xl/workbook.xml absent)";
        return std::nullopt;
    }
    // Sheet targets by relation id.
    std::map<std::string, std::string> targets;
    if (auto r = parts.find("xl/_rels/workbook.xml.rels"); r != parts.end()) {
        for (const Tag& t : tags(r->second)) {
            if (t.name != "Relationship" || t.closing) continue;
            std::string target = t.attrs.count("Target") ? t.attrs.at("Target") : "";
            if (!target.empty() && target[0] == '/') target = target.substr(1);
            else target = "xl/" + target;
            targets[t.attrs.count("Id") ? t.attrs.at("Id") : ""] = target;
        }
    }
    std::vector<std::string> shared;
    if (auto ss = parts.find("xl/sharedStrings.xml"); ss != parts.end()) {
        bool inSi = false, inT = false, inRph = false;
        std::string cur;
        for (const Tag& t : tags(ss->second)) {
            if (t.name == "si") {
                if (t.closing) {
                    shared.push_back(cur);
                    inSi = false;
                } else if (t.selfClosing) {
                    shared.emplace_back();
                } else {
                    inSi = true;
                    cur.clear();
                }
            } else if (t.name == "rPh") {
                inRph = !t.closing && !t.selfClosing;  // phonetic runs are not the cell's text
            } else if (t.name == "t" && inSi) {
                inT = !t.closing && !t.selfClosing;
                if (inT && !inRph) cur += t.textAfter;
            }
        }
    }
    XlsxWorkbook book;
    for (const Tag& t : tags(wbIt->second)) {
        if (t.name != "sheet" || t.closing) continue;
        XlsxSheet sheet;
        sheet.name = t.attrs.count("name") ? t.attrs.at("name") : "";
        std::string rid;
        for (const auto& [k, v] : t.attrs)
            if (k == "r:id" || (k.size() > 3 && k.substr(k.size() - 3) == ":id")) rid = v;
        auto target = targets.find(rid);
        auto part = target == targets.end() ? parts.end() : parts.find(target->second);
        if (part == parts.end()) {
            error = "classeur endommagé (feuille \"" + sheet.name + "\" introuvable)";
            return std::nullopt;
        }
        int row = -1, col = -1;
        std::string type;
        bool inV = false, inIs = false;
        std::string value;
        auto place = [&](const std::string& text, bool number) {
            if (row < 0 || col < 0 || row > 100000 || col > 1000) return;
            if (sheet.rows.size() <= static_cast<size_t>(row)) sheet.rows.resize(static_cast<size_t>(row) + 1);
            auto& r = sheet.rows[static_cast<size_t>(row)];
            if (r.size() <= static_cast<size_t>(col)) r.resize(static_cast<size_t>(col) + 1);
            r[static_cast<size_t>(col)] = {text, number};
        };
        int nextRow = 0, nextCol = 0;
        for (const Tag& c : tags(part->second)) {
            if (c.name == "row" && !c.closing) {
                row = c.attrs.count("r") ? std::atoi(c.attrs.at("r").c_str()) - 1 : nextRow;
                nextRow = row + 1;
                nextCol = 0;
            } else if (c.name == "c" && !c.closing) {
                const std::string ref = c.attrs.count("r") ? c.attrs.at("r") : "";
                col = ref.empty() ? nextCol : columnOf(ref);
                if (!ref.empty() && rowOf(ref) >= 0) row = rowOf(ref);
                nextCol = col + 1;
                type = c.attrs.count("t") ? c.attrs.at("t") : "n";
                value.clear();
            } else if (c.name == "c" && c.closing) {
                if (type == "s") {
                    size_t idx = 0;
                    try {
                        idx = std::stoul(value);
                    } catch (const std::exception&) {
                        idx = shared.size();
                    }
                    if (idx < shared.size()) place(shared[idx], false);
                } else if (type == "n") {
                    if (!value.empty()) place(value, true);
                } else {
                    place(value, false);
                }
            } else if (c.name == "v") {
                inV = !c.closing && !c.selfClosing;
                if (inV) value = c.textAfter;
            } else if (c.name == "is") {
                inIs = !c.closing && !c.selfClosing;
            } else if (c.name == "t" && inIs && !c.closing && !c.selfClosing) {
                value += c.textAfter;
            }
        }
        book.sheets.push_back(std::move(sheet));
    }
    if (book.sheets.empty()) {
        error = "classeur sans feuille";
        return std::nullopt;
    }
    return book;
}

}  // namespace tarvokin
