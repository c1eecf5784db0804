#include "catalogue/MovieCatalogue.h"
#include <array>

namespace vistrel {

namespace {

constexpr auto kMovies = std::to_array<CatalogueRow>({
    {"In Theatres", "/mdb/inthe.html"},    {"Free Stream", "/mdb/fsotd.html"},
    {R"("#" Movies)", "/mdb/number.html"}, {R"("A" Movies)", "/mdb/a.html"},
    {R"("B" Movies)", "/mdb/b.html"},      {R"("C" Movies)", "/mdb/c.html"},
    {R"("D" Movies)", "/mdb/d.html"},      {R"("E" Movies)", "/mdb/e.html"},
    {R"("F" Movies)", "/mdb/f.html"},      {R"("G" Movies)", "/mdb/g.html"},
    {R"("H" Movies)", "/mdb/h.html"},      {R"("I" Movies)", "/mdb/i.html"},
    {R"("J" Movies)", "/mdb/j.html"},      {R"("K" Movies)", "/mdb/k.html"},
    {R"("L" Movies)", "/mdb/l.html"},      {R"("M" Movies)", "/mdb/m.html"},
    {R"("N" Movies)", "/mdb/n.html"},      {R"("O" Movies)", "/mdb/o.html"},
    {R"("P" Movies)", "/mdb/p.html"},      {R"("Q" Movies)", "/mdb/q.html"},
    {R"("R" Movies)", "/mdb/r.html"},      {R"("S" Movies)", "/mdb/s.html"},
    {R"("T" Movies)", "/mdb/t.html"},      {R"("U" Movies)", "/mdb/u.html"},
    {R"("V" Movies)", "/mdb/v.html"},      {R"("W" Movies)", "/mdb/w.html"},
    {R"("X" Movies)", "/mdb/x.html"},      {R"("Y" Movies)", "/mdb/y.html"},
    {R"("Z" Movies)", "/mdb/z.html"},
});

} // namespace

std::span<const CatalogueRow> movieCatalogue() {
    return kMovies;
}

} // namespace vistrel
