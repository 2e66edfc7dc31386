// What lies over the model: symbols, diagrams, crosses, hinges. All of it is made anew when the state changes; none of
// it is large.

import { Lines } from "./lines.js";
import { lineMaterial } from "./materials.js";
import {
  axesSymbols,
  ballSymbols,
  elementLoadSymbols,
  forceSymbols,
  lineLoadSymbols,
  reactionSymbols,
  supportSymbols,
} from "./symbols.js";
import { crossesOf } from "./crosses.js";
import { ribbonsOf } from "./ribbons.js";
import { openHinges } from "./steps.js";

const HINGE = [0.9, 0.1, 0.1];

async function supports(app) {
  const { step, report } = app;
  const [node, dofs] = await Promise.all([
    report.array(step.supports?.node, Int32Array),
    report.array(step.supports?.dofs, Uint8Array),
  ]);
  return node.length ? supportSymbols(app.model, { node, dofs }, app.state.displacement) : [];
}

async function forces(app, source, values, draw) {
  const [nodes, numbers] = await Promise.all([app.report.array(source?.node, Int32Array), app.report.array(values)]);
  return nodes.length ? draw(app.model, nodes, numbers, app.state.displacement) : [];
}

// Loads as the deck has them: arrows at nodes, rows of arrows along members, an arrow on plates and solids.
async function loads(app) {
  const { step, report, model, state } = app;
  if (!step.point_loads) return forces(app, step.loads, step.loads?.force, forceSymbols);
  const spread = async (source, draw, move) => {
    const [element, force] = await Promise.all([
      report.array(source?.element, Int32Array),
      report.array(source?.force),
    ]);
    return element.length ? draw(model, element, force, move) : [];
  };
  const made = await Promise.all([
    forces(app, step.point_loads, step.point_loads.force, forceSymbols),
    spread(step.line_loads, lineLoadSymbols, app.stationMove),
    spread(step.area_loads, elementLoadSymbols, state.displacement),
    spread(step.body_loads, elementLoadSymbols, state.displacement),
  ]);
  return made.flat();
}

async function crosses(app) {
  if (app.field?.form !== "plane_stress") return [];
  const axes = await app.report.array(app.report.json.axes);
  const { places, moves, tints } = crossesOf(
    app.model,
    app.field,
    await app.report.array(app.field.array),
    axes,
    app.state.displacement,
  );
  const lines = new Lines(lineMaterial({ tinted: true, onTop: true }));
  lines.set(places, moves, tints);
  lines.mesh.name = "crosses";
  return [lines.mesh];
}

function hinges(app) {
  const { step, model, state } = app;
  if (!step.path) return [];
  const point = state.kind === "state" ? state.point : Infinity;
  const places = [],
    moves = [],
    tints = [];
  for (const { element, end } of openHinges(app.steps, step, point)) {
    const member = model.memberOf.get(element);
    if (member === undefined) continue;
    const [first, last] = [model.members.first[member], model.members.first[member + 1] - 1];
    const [near, far] = end === 1 ? [first, last] : [last, first];
    const between = (source) => [0, 1, 2].map((k) => 0.93 * source[3 * near + k] + 0.07 * source[3 * far + k]);
    places.push(between(model.stations.place));
    moves.push(app.stationMove ? between(app.stationMove) : [0, 0, 0]);
    tints.push(HINGE);
  }
  return places.length ? ballSymbols(model, places, moves, tints, 0.022) : [];
}

async function ribbons(app) {
  app.labels.set("diagram", []);
  app.view.beyond = [];
  app.undrawn = null;
  if (!app.quantity) return [];
  const { size, meshes, labels, tips } = await ribbonsOf(app.report, app.model, app.state, app.quantity, {
    stretch: app.stretch,
    scale: app.scale,
    shown: app.shown,
    move: app.stationMove,
  });
  if (size === null) app.undrawn = `This state has no ${app.quantity.name}.`;
  else if (!(size > 0)) app.undrawn = `${app.quantity.name} is 0 everywhere.`;
  app.labels.set("diagram", labels);
  app.view.beyond = tips;
  // Once for each diagram: who comes nearer afterwards stays there.
  const drawn = [app.quantity.name, app.stretch, app.step.number].join("|");
  if (drawn !== app.fitted && app.view.leaves(tips)) app.view.fit();
  app.fitted = drawn;
  return meshes;
}

async function localAxes(app) {
  return axesSymbols(app.model, await app.report.array(app.report.json.axes), app.shown);
}

/** Makes all overlays that are switched on. */
export async function refreshOverlays(app) {
  if (!app.step) return;
  const turn = (app.overlayTurn = (app.overlayTurn ?? 0) + 1);
  const { switches, step, view } = app;
  const end = app.state.kind === "end";
  const made = await Promise.all([
    switches.supports ? supports(app) : [],
    switches.loads && (app.state.kind !== "mode" || step.kind === "buckle") ? loads(app) : [],
    switches.reactions && end ? forces(app, step.reactions, step.reactions?.value, reactionSymbols) : [],
    switches.axes ? localAxes(app) : [],
    switches.crosses ? crosses(app) : [],
    hinges(app),
    ribbons(app),
  ]);
  if (turn !== app.overlayTurn) return;
  for (const mesh of app.overlayMeshes ?? []) {
    view.root.remove(mesh);
    mesh.geometry.dispose();
  }
  app.overlayMeshes = made.flat();
  if (app.overlayMeshes.length) view.root.add(...app.overlayMeshes);
  app.edges.mesh.visible = switches.edges || app.model.outline;
  if (app.meshLines) app.meshLines.mesh.visible = switches.mesh;
  app.rest.mesh.visible = app.restMembers.mesh.visible = switches.rest;
  view.draw();
}
