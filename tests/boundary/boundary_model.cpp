// boundary_model.cpp: the model behind the C and Fortran callers.
#include "boundary_model.h"

#include <memory>

#include "plate_model.h"
#include "solid_model.h"

namespace {
std::unique_ptr<support::plate_model> model;
std::unique_ptr<support::solid_model> solid;
}  // namespace

void boundary_model_open(double** A, int32_t* n) {
  support::plate_description shell;
  shell.nodes = {support::point{0.0, 0.0, 0.0}, support::point{3.0, 0.0, 0.0}, support::point{0.0, 2.0, 0.0}};
  shell.thickness = 0.5;
  shell.young = 1000.0;
  shell.poisson = 0.25;
  shell.unit_weight = 4.0;
  shell.mass_factor = 1.5;
  support::plate_description membrane = shell;
  membrane.formulation = 2;
  boundary_model_close();  // one model lives at a time
  model = std::make_unique<support::plate_model>(std::vector<support::plate_description>{shell, membrane});
  *A = model->raw();
  *n = model->extent();
}

void boundary_model_open_solid(double** A, int32_t* n, int32_t* IOFF) {
  support::solid_description box;
  box.nodes = {{0, 0, 0}, {2, 0, 0}, {2, 3, 0}, {0, 3, 0}, {0, 0, 5}, {2, 0, 5}, {2, 3, 5}, {0, 3, 5}};
  box.young = 1000.0;
  box.poisson = 0.25;
  box.id = 17;
  boundary_model_close();
  solid = std::make_unique<support::solid_model>(std::vector<support::solid_description>{box});
  *A = solid->raw();
  *n = solid->extent();
  *IOFF = solid->entry(1);
}

void boundary_model_close() {
  model.reset();
  solid.reset();
}

void boundary_model_geometry(const int32_t* elem, double* area, double* weight, double* factored_weight) {
  const PLATE_RECORD& plate = model->plate(*elem);
  *area = static_cast<double>(plate.AREA);
  *weight = static_cast<double>(plate.WEIGHT);
  *factored_weight = static_cast<double>(plate.FACTORED_WEIGHT);
}
