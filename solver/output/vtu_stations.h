// vtu_stations.h: the points of a VTU file: the nodes of the model, then the stations of its members.
//
// Members that meet at a node have different section forces there. Each beam, truss and cable therefore has points of
// its own, from end to end, and its cell is the line through them.
#ifndef FINITES_SOLVER_VTU_STATIONS_H
#define FINITES_SOLVER_VTU_STATIONS_H

#include <cstddef>
#include <vector>

#include <pugixml.hpp>

#include "analyses/results.h"
#include "model/model.h"
#include "output/vtu_arrays.h"

namespace solver {

class vtu_points {
 public:
  explicit vtu_points(const model& m) : model_(m), nodes_(m.nodes.size()) {}  // of nodes alone
  vtu_points(const model& m, const step_results& results, int station_count);

  std::size_t count() const { return nodes_ + stations_.size(); }
  bool is_node(std::size_t point) const { return point < nodes_; }
  int id(std::size_t point) const;  // the user's number of a node; -1 at a station
  double place(std::size_t point, int i) const;
  const station& at(std::size_t point) const { return stations_[point - nodes_]; }
  // The points of the cell of an element.
  std::vector<int> of_element(std::size_t e) const;

  // Point data of stations, which are 0 at nodes; nothing where no member has stations.
  void write(const vtu_data& data) const;
  // The member of each and its distance along it.
  void write_places(const vtu_data& data) const;

 private:
  void write_diagrams(const vtu_data& data) const;

  const model& model_;
  std::size_t nodes_;
  std::vector<station> stations_;
  std::vector<const member_field*> field_;  // by station
  std::vector<std::size_t> first_;          // by element and one more, into stations_; empty without stations
};

}  // namespace solver

#endif
