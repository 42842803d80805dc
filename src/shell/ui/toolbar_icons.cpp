#include "shell/ui/toolbar_icons.h"

#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

struct IconFile {
    int position;
    const char* file;
};

constexpr IconFile kIcons[] = {
    {button::New, "new"},
    {button::Open, "open"},
    {button::Save, "save"},
    {button::Base, "database"},
    {button::View3D, "view3d"},
    {button::Profils, "profiles"},
    {button::TestPol, "polar_interpolation"},
    {button::Wing, "wing"},
    {button::Fuselage, "fuselage"},
    {button::Stab, "stab"},
    {button::Reglages, "settings"},
    {button::Aero, "pressure"},
    {button::View2D, "view2d"},
    {button::Performances, "performance"},
    {button::Allongement, "aspect_ratio"},
    {button::CalcMot, "motor_calc"},
    {button::Motorisation, "power"},
    {button::Servos, "servos"},
    {button::Converter, "units"},
    {button::Calculator, "calculator"},
    {button::NacaGenerator, "naca"},
    {button::RibGenerator, "ribs"},
    {button::FrameGenerator, "frames"},
    {button::Wizard, "wizard"},
    {button::CloseAll, "close_all"},
    {button::Report, "report"},
    {button::Export, "workbook"},
};

}  // namespace

QString toolbarIconPath(int position) {
    for (const IconFile& i : kIcons) {
        if (i.position == position) return QStringLiteral(":/icons/%1.svg").arg(QLatin1String(i.file));
    }
    return {};
}

QIcon toolbarIcon(int position) {
    const QString path = toolbarIconPath(position);
    // The file name alone lets the SVG icon engine draw each size asked for
    // from the drawing instead of scaling one bitmap.
    return path.isEmpty() ? QIcon() : QIcon(path);
}

}  // namespace tarvokin::ui
