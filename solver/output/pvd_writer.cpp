// pvd_writer.cpp: a list of files in XML.
#include "output/pvd_writer.h"

#include <cstddef>
#include <numeric>

#include <fmt/format.h>
#include <pugixml.hpp>

namespace solver {

void write_pvd(std::ostream& out, const std::vector<pvd_entry>& entries) {
  pugi::xml_document document;
  pugi::xml_node file = document.append_child("VTKFile");
  file.append_attribute("type") = "Collection";
  file.append_attribute("version") = "0.1";
  file.append_attribute("byte_order") = "LittleEndian";
  pugi::xml_node all = file.append_child("Collection");
  for (const pvd_entry& each : entries) {
    pugi::xml_node one = all.append_child("DataSet");
    one.append_attribute("timestep") = fmt::format("{}", each.time).c_str();
    one.append_attribute("group") = "";
    one.append_attribute("part") = "0";
    one.append_attribute("name") = each.name.c_str();
    one.append_attribute("file") = each.file.c_str();
  }
  document.save(out, "  ");
}

std::vector<double> growing_times(const std::vector<double>& values) {
  std::vector<double> times = values;
  for (std::size_t k = 1; k < values.size(); ++k) {
    if (values[k] > values[k - 1]) continue;
    std::iota(times.begin(), times.end(), 1.0);
    break;
  }
  return times;
}

}  // namespace solver
