// The HTML page of a model's report: its lines, in the order and with the
// markup a browser has always been given, and the names of its pictures.
// The page is built from the fields only; drawing the pictures and writing
// the files belong to the caller.
#pragma once

#include <string>
#include <vector>

namespace tarvokin {

class Sheet;

// Where each picture of the report comes from.
enum class ReportSource { View3D, GlobalChart, Performance, AspectRatio };

struct ReportPicture {
    ReportSource source;
    int index;         // chart of its window: 0..2 performance, 0..4 aspect ratio
    std::string file;  // name beside the page
};

// The model name of the page and its pictures: T_NOM_Modele trimmed.
std::string ReportModelName(const Sheet& s);

// The ten pictures, in the order they are made: 3D view, global chart, the
// three performance charts, the five aspect-ratio charts.
std::vector<ReportPicture> ReportPictures(const std::string& model);

// A picture's link from the page: relative, "/" between the parts, so that a
// browser finds it whatever the platform.
std::string ReportLink(const std::string& file);

// The page, one line a record.
std::vector<std::string> ReportPageLines(const Sheet& s, const std::string& model);

}  // namespace tarvokin
