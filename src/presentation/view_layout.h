#pragma once
// The resizer of the view forms: lays a number of views out in a grid that fills
// a container, choosing the columns that give each view the most room in the
// views' own shape.
#include <vector>

namespace osm {

struct ViewRect {
    double x, y, w, h;
};

// The shapes of the views (width over height) and the gap between them, in
// pixels (the forms' 50 twips).
inline constexpr double MapAspect = 1.5;
inline constexpr double GraphAspect = 3.0;
inline constexpr double ProfileAspect = 3.0;
inline constexpr double ViewGap = 50.0 / 15.0;

// Lays n views out to fill a container of width w and height h with the aspect
// ratio and gap of the program's views; returns one rectangle per view, row by
// row from the top left. Gaps stand around and between the views; a container
// too small for the gaps gives views of no size rather than negative ones.
std::vector<ViewRect> TileViews(int n, double w, double h, double aspect, double gap);

// The columns TileViews chooses for n views.
int TileColumns(int n, double w, double h, double aspect, double gap);

}  // namespace osm
