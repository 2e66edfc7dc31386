// Calls for tests and for scripts that take pictures: window.finitesReport. Nodes and elements go by their numbers in
// the deck; steps, modes and states count from 0.

import { setChoice, setField, setScale, setStep, setSwitch, tell } from "./app.js";
import { setColouring, setHidden } from "./choosing.js";
import { groupsOf } from "./groups.js";
import { refreshOverlays } from "./overlays.js";
import { QUANTITIES, chainOf, profiles } from "./diagrams.js";

function nodeOf(app, id) {
  const node = app.model.nodes.id.indexOf(id);
  if (node < 0) throw new Error(`there is no node ${id}`);
  return node;
}

function pixelOf(app, id) {
  const node = nodeOf(app, id);
  const { xyz } = app.model.nodes,
    move = app.state.displacement;
  return app.view.project(...[0, 1, 2].map((k) => xyz[3 * node + k] + (move ? app.scale * move[3 * node + k] : 0)));
}

function fieldOf(app, name, on, of) {
  const field = app.state.fields.find((f) => f.name === name && (!on || f.on === on) && (!of || f.of === of));
  if (!field)
    throw new Error(`there is no field ${name}; there are: ${app.state.fields.map((f) => f.name).join(", ")}`);
  return field;
}

/** The calls, each of which waits until the page is ready. */
export function testCalls(ready) {
  const call =
    (routine) =>
    async (...values) =>
      routine((await ready).app, ...values);
  return {
    ready: ready.then(({ times }) => times),
    setStep: call(setStep),
    setMode: call((app, index) => setChoice(app, { kind: "mode", index })),
    setState: call((app, index) => setChoice(app, { kind: "state", index })),
    setField: call((app, name, component, on, of) => setField(app, fieldOf(app, name, on, of), component ?? null)),
    setScale: call(setScale),
    setSwitch: call(setSwitch),
    setColouring: call(setColouring),
    setDiagram: call(async (app, name) => {
      app.quantity = QUANTITIES.find((quantity) => quantity.name === name) ?? null;
      await refreshOverlays(app);
      tell(app);
    }),
    view: call((app, name) => app.view.look(name)),
    turn: call((app, around, over) => app.view.turn(around, over)),
    zoom: call((app, factor) => app.view.zoom(factor)),
    fields: call((app) =>
      app.state.fields.map(({ name, label, on, components, of }) => ({ name, label, on, components, of })),
    ),
    range: call(
      (app) =>
        app.range && {
          low: app.range.low,
          high: app.range.high,
          lowName: app.range.lowName,
          highName: app.range.highName,
        },
    ),
    pickNode: call((app, id) => app.select({ node: nodeOf(app, id) })),
    pickElement: call((app, id) => app.select({ element: app.model.elements.id.indexOf(id) })),
    project: call(pixelOf),
    projectPlace: call((app, place) => app.view.project(...place)),
    colourAt: call((app, id) => app.view.colours([pixelOf(app, id)])[0]),
    colours: call((app, ids) => app.view.colours(ids.map((id) => pixelOf(app, id)))),
    pixels: call((app, places) => app.view.colours(places)),
    hide: call((app, key, hidden) => setHidden(app, key, hidden)),
    // What lies over the model, as it is drawn: symbols with their places and directions, ribbons and crosses by
    // vertex.
    overlays: call((app) =>
      (app.overlayMeshes ?? []).map(({ name, geometry }) => ({
        name,
        ...Object.fromEntries(
          Object.entries(geometry.attributes)
            .filter(([key]) => key !== "normal" && key !== "uv")
            .map(([key, { array, itemSize }]) => [
              key,
              Array.from({ length: array.length / itemSize }, (_, i) =>
                Array.from(array.subarray(itemSize * i, itemSize * (i + 1))),
              ),
            ]),
        ),
      })),
    ),
    labels: call((app) =>
      app.labels.items.map(({ text, place, move, className }) => ({ text, place: [...place], move, className })),
    ),
    // How many points of the diagram, and corners round the deflected shape, lie outside of the picture.
    outside: call(
      (app) => [...app.view.deflected, ...app.view.beyond].filter((point) => app.view.leaves([point])).length,
    ),
    scale: call((app) => app.scale),
    camera: call((app) => ({
      position: app.view.camera.position.toArray(),
      target: app.view.controls.target.toArray(),
      zoom: app.view.camera.zoom,
    })),
    members: call((app) => ({
      position: Array.from(app.members.position),
      value: Array.from(app.members.value),
      station: Array.from(app.members.station),
      move: Array.from(app.members.move),
    })),
    faces: call((app) => ({
      position: Array.from(app.faces.position),
      move: Array.from(app.faces.move),
    })),
    tints: call((app, colouring) => {
      app.colourBy = colouring;
      const { list, numberOf } = groupsOf(app);
      return Array.from(app.model.elements.id, (_, element) => list[numberOf(element)]?.[0] ?? null);
    }),
    profile: call(async (app, id, name) => {
      const member = app.model.memberOf.get(app.model.elements.id.indexOf(id));
      return profiles(
        app.report,
        app.model,
        app.state,
        QUANTITIES.find((q) => q.name === name),
        chainOf(app.model, member),
      );
    }),
    frames: call((app, count) => {
      const start = performance.now();
      for (let i = 0; i < count; ++i) {
        app.view.turn(0.02, 0);
        app.view.colours([[1, 1]]); // waits for the picture
      }
      return (performance.now() - start) / count;
    }),
  };
}
