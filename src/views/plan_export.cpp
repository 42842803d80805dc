#include "views/plan_export.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {

// Coordinates with three decimals: a thousandth of a millimetre.
std::string mm(double v) { return std::isfinite(v) ? fixed(v, 3) : "0.000"; }

// The items of each layer in turn, in drawing order.
void walkLayers(const Plan& plan, const std::function<void(const PlanShape&)>& shape,
                const std::function<void(const PlanPolyline&)>& polyline,
                const std::function<void(const PlanSegment&)>& segment,
                const std::function<void(const PlanLabel&)>& label, const std::function<void(PlanLayer)>& begin,
                const std::function<void(PlanLayer)>& end) {
    for (int l = 0; l < kPlanLayerCount; ++l) {
        const PlanLayer layer = static_cast<PlanLayer>(l);
        begin(layer);
        for (const PlanShape& s : plan.shapes)
            if (s.layer == layer) shape(s);
        for (const PlanPolyline& p : plan.polylines)
            if (p.layer == layer) polyline(p);
        for (const PlanSegment& g : plan.segments)
            if (g.layer == layer) segment(g);
        for (const PlanLabel& t : plan.labels)
            if (t.layer == layer) label(t);
        end(layer);
    }
}

const char* layerName(PlanLayer l) {
    switch (l) {
        case PlanLayer::Outline: return "CONTOURS";
        case PlanLayer::Construction: return "CONSTRUCTION";
        case PlanLayer::Mark: return "REPERES";
        case PlanLayer::Label: return "TEXTES";
    }
    return "0";
}

// The drawing's box with room for the labels' text.
PlanBounds exportBounds(const Plan& plan) {
    PlanBounds b = plan.boundsWithText();
    if (b.empty) b = {0, 0, 1, 1, false};
    const double margin = std::max(5.0, 0.02 * std::max(b.width(), b.height()));
    b.xMin -= margin;
    b.yMin -= margin;
    b.xMax += margin;
    b.yMax += margin;
    return b;
}

// ---- SVG ---------------------------------------------------------------------------

std::string xmlEscaped(std::string_view s) {
    std::string out;
    for (char c : s) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            default: out += c;
        }
    }
    return out;
}

std::string rgb(Rgb c) {
    return "rgb(" + std::to_string(c.r) + "," + std::to_string(c.g) + "," + std::to_string(c.b) + ")";
}

std::string svgPoints(const std::vector<PlanPoint>& pts) {
    std::string out;
    for (const PlanPoint& p : pts) {
        if (!out.empty()) out += ' ';
        out += mm(p.x) + "," + mm(-p.y);
    }
    return out;
}

// ---- DXF ---------------------------------------------------------------------------

// Nearest of the first nine colours of the CAD colour index.
int colourIndex(Rgb c) {
    struct Entry {
        int index;
        Rgb rgb;
    };
    static const Entry table[] = {{1, {255, 0, 0}},     {2, {255, 255, 0}}, {3, {0, 255, 0}},
                                  {4, {0, 255, 255}},   {5, {0, 0, 255}},   {6, {255, 0, 255}},
                                  {7, {0, 0, 0}},       {8, {128, 128, 128}}, {9, {192, 192, 192}}};
    int best = 7;
    long bestDistance = -1;
    for (const Entry& e : table) {
        const long dr = c.r - e.rgb.r, dg = c.g - e.rgb.g, db = c.b - e.rgb.b;
        const long d = dr * dr + dg * dg + db * db;
        if (bestDistance < 0 || d < bestDistance) {
            bestDistance = d;
            best = e.index;
        }
    }
    return best;
}

class DxfWriter {
public:
    void group(int code, const std::string& value) {
        out_ += std::to_string(code);
        out_ += "\r\n";
        out_ += value;
        out_ += "\r\n";
    }
    void group(int code, double value) { group(code, mm(value)); }
    void group(int code, int value) { group(code, std::to_string(value)); }
    void point(int base, PlanPoint p) {
        group(base, p.x);
        group(base + 10, p.y);
        group(base + 20, 0.0);
    }
    void entity(const char* type, PlanLayer layer, Rgb colour, bool dashed) {
        group(0, std::string(type));
        group(8, std::string(layerName(layer)));
        if (dashed) group(6, std::string("DASHED"));
        group(62, colourIndex(colour));
    }
    void polyline(const std::vector<PlanPoint>& pts, bool closed, PlanLayer layer, Rgb colour, bool dashed) {
        if (pts.size() < 2) return;
        entity("POLYLINE", layer, colour, dashed);
        group(66, 1);
        point(10, {0, 0});
        group(70, closed ? 1 : 0);
        for (const PlanPoint& p : pts) {
            group(0, std::string("VERTEX"));
            group(8, std::string(layerName(layer)));
            point(10, p);
        }
        group(0, std::string("SEQEND"));
        group(8, std::string(layerName(layer)));
    }
    std::string take() { return std::move(out_); }

private:
    std::string out_;
};

}  // namespace

std::string PlanToSvg(const Plan& plan) {
    const PlanBounds b = exportBounds(plan);
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n";
    out += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + mm(b.width()) + "mm\" height=\"" + mm(b.height()) +
           "mm\" viewBox=\"" + mm(b.xMin) + " " + mm(-b.yMax) + " " + mm(b.width()) + " " + mm(b.height()) + "\">\n";
    if (!plan.title.empty()) out += "<title>" + xmlEscaped(plan.title) + "</title>\n";
    const std::string stroke = " stroke-width=\"" + mm(std::max(0.2, 0.0015 * std::max(b.width(), b.height()))) + "\"";
    const std::string dash = " stroke-dasharray=\"" + mm(0.01 * std::max(b.width(), b.height())) + "\"";
    walkLayers(
        plan,
        [&](const PlanShape& s) {
            out += "<polygon points=\"" + svgPoints(s.points) + "\" fill=\"" + rgb(s.fill) + "\" stroke=\"" +
                   rgb(s.colour) + "\"" + stroke + "/>\n";
        },
        [&](const PlanPolyline& p) {
            out += std::string(p.closed ? "<polygon" : "<polyline") + " points=\"" + svgPoints(p.points) +
                   "\" fill=\"none\" stroke=\"" + rgb(p.colour) + "\"" + stroke + (p.dashed ? dash : "") + "/>\n";
        },
        [&](const PlanSegment& g) {
            out += "<line x1=\"" + mm(g.a.x) + "\" y1=\"" + mm(-g.a.y) + "\" x2=\"" + mm(g.b.x) + "\" y2=\"" +
                   mm(-g.b.y) + "\" stroke=\"" + rgb(g.colour) + "\"" + stroke + (g.dashed ? dash : "") + "/>\n";
        },
        [&](const PlanLabel& l) {
            static const char* anchors[] = {"start", "middle", "end"};
            out += "<text font-family=\"sans-serif\" font-size=\"" + mm(l.height / 0.7) + "\" fill=\"" + rgb(l.colour) +
                   "\">";
            for (const PlanTextLine& line : LayoutLabel(l)) {
                // The baseline lies half a capital height under the line's middle.
                out += "<tspan x=\"" + mm(line.middle.x) + "\" y=\"" + mm(-(line.middle.y - l.height / 2)) +
                       "\" text-anchor=\"" + anchors[static_cast<int>(line.align)] + "\">" + xmlEscaped(line.text) +
                       "</tspan>";
            }
            out += "</text>\n";
        },
        [&](PlanLayer layer) { out += std::string("<g id=\"") + layerName(layer) + "\">\n"; },
        [&](PlanLayer) { out += "</g>\n"; });
    out += "</svg>\n";
    return out;
}

std::string PlanToDxf(const Plan& plan) {
    const PlanBounds b = exportBounds(plan);
    DxfWriter w;
    w.group(0, std::string("SECTION"));
    w.group(2, std::string("HEADER"));
    w.group(9, std::string("$ACADVER"));
    w.group(1, std::string("AC1009"));
    w.group(9, std::string("$DWGCODEPAGE"));
    w.group(3, std::string("ANSI_1252"));
    w.group(9, std::string("$EXTMIN"));
    w.point(10, {b.xMin, b.yMin});
    w.group(9, std::string("$EXTMAX"));
    w.point(10, {b.xMax, b.yMax});
    w.group(0, std::string("ENDSEC"));

    w.group(0, std::string("SECTION"));
    w.group(2, std::string("TABLES"));
    w.group(0, std::string("TABLE"));
    w.group(2, std::string("LTYPE"));
    w.group(70, 2);
    const double dash = std::max(1.0, 0.01 * std::max(b.width(), b.height()));
    for (bool dashed : {false, true}) {
        w.group(0, std::string("LTYPE"));
        w.group(2, std::string(dashed ? "DASHED" : "CONTINUOUS"));
        w.group(70, 0);
        w.group(3, std::string(dashed ? "__ __ __" : "Solid line"));
        w.group(72, 65);
        w.group(73, dashed ? 2 : 0);
        w.group(40, dashed ? 2 * dash : 0.0);
        if (dashed) {
            w.group(49, dash);
            w.group(49, -dash);
        }
    }
    w.group(0, std::string("ENDTAB"));
    w.group(0, std::string("TABLE"));
    w.group(2, std::string("LAYER"));
    w.group(70, kPlanLayerCount);
    for (int l = 0; l < kPlanLayerCount; ++l) {
        w.group(0, std::string("LAYER"));
        w.group(2, std::string(layerName(static_cast<PlanLayer>(l))));
        w.group(70, 0);
        w.group(62, 7);
        w.group(6, std::string("CONTINUOUS"));
    }
    w.group(0, std::string("ENDTAB"));
    w.group(0, std::string("ENDSEC"));

    w.group(0, std::string("SECTION"));
    w.group(2, std::string("ENTITIES"));
    walkLayers(
        plan, [&](const PlanShape& s) { w.polyline(s.points, true, s.layer, s.colour, false); },
        [&](const PlanPolyline& p) { w.polyline(p.points, p.closed, p.layer, p.colour, p.dashed); },
        [&](const PlanSegment& g) {
            w.entity("LINE", g.layer, g.colour, g.dashed);
            w.point(10, g.a);
            w.point(11, g.b);
        },
        [&](const PlanLabel& l) {
            for (const PlanTextLine& line : LayoutLabel(l)) {
                if (line.text.empty()) continue;
                w.entity("TEXT", l.layer, l.colour, false);
                w.point(10, line.middle);
                w.group(40, l.height);
                w.group(1, line.text);
                w.group(72, static_cast<int>(line.align));  // 0 left, 1 centre, 2 right
                w.group(73, 2);                             // middle of the capitals
                w.point(11, line.middle);
            }
        },
        [](PlanLayer) {}, [](PlanLayer) {});
    w.group(0, std::string("ENDSEC"));
    w.group(0, std::string("EOF"));
    return utf8ToLatin1(w.take());
}

bool SavePlanSvg(const Plan& plan, const std::filesystem::path& file) { return replaceFile(file, PlanToSvg(plan)); }

bool SavePlanDxf(const Plan& plan, const std::filesystem::path& file) { return replaceFile(file, PlanToDxf(plan)); }

}  // namespace tarvokin
