// What a step shows: its end, one of its modes, or one state of its path.

import { cleared, sizesOf } from "./fields.js";
import { show } from "./format.js";

const FORCES = ["N", "Vy", "Vz", "T", "My", "Mz"];

/** The step's end, a mode or a state: { kind: "end" | "mode" | "state", index }. Decodes displacements and forces. */
export async function stateOf(report, step, choice) {
  if (choice.kind === "mode") return modeState(report, step, choice.index);
  if (choice.kind === "state") return pathState(report, step, choice.index);
  const displacement = await orNothing(report, step.displacement);
  const stationMove = await orNothing(report, step.stations?.displacement);
  const stationForce = await orNothing(report, step.stations?.force);
  const fields = [...(step.fields ?? [])];
  if (stationForce && !fields.some((field) => field.on === "station" && field.components.includes("N"))) {
    fields.push({
      name: "section_force",
      label: "Section forces",
      group: "Members",
      on: "station",
      components: FORCES,
      array: step.stations.force,
      form: "scalar",
    });
  }
  return { kind: "end", displacement, stationMove, stationForce, fields };
}

async function modeState(report, step, index) {
  const mode = step.modes[index];
  const displacement = await orNothing(report, mode.shape);
  return {
    kind: "mode",
    displacement,
    fields: displacement
      ? [
          {
            name: "shape",
            label: "Shape of the mode",
            group: "Modes",
            on: "node",
            components: ["ux", "uy", "uz"],
            array: mode.shape,
            form: "vector",
          },
        ]
      : [],
  };
}

async function pathState(report, step, index) {
  const state = step.path.states[index];
  const displacement = await orNothing(report, state.displacement);
  const fields = [...(state.fields ?? [])];
  if (displacement && !fields.some((field) => field.name === "displacement")) {
    fields.unshift({
      name: "displacement",
      label: "Displacement",
      group: "Displacements",
      on: "node",
      components: ["ux", "uy", "uz"],
      array: state.displacement,
      form: "vector",
    });
  }
  const factors = await report.array(step.path.factor);
  return { kind: "state", point: state.point, factor: factors[state.point], displacement, fields };
}

async function orNothing(report, reference) {
  const numbers = await report.array(reference);
  return numbers.length ? numbers : null;
}

/** What is looked at first: the end, or the first mode of a step that looks for modes. */
export function firstChoice(step) {
  const modes = step.modes?.length > 0;
  return modes && !step.displacement ? { kind: "mode", index: 0 } : { kind: "end", index: 0 };
}

/** How a mode is called. */
export function modeLabel(step, index, show) {
  const word = step.kind === "buckle" ? "factor" : "frequency";
  return `${index + 1}: ${word} ${show(step.modes[index].value)}`;
}

/** "Step 2: dead (static)". */
export function stepLabel(step) {
  return `${step.number}${step.name ? `: ${step.name}` : ""} (${step.kind})`;
}

/** What of a step is seen, behind its label: " · mode 2: factor 3.1", " · load factor 0.5"; of its end nothing. */
export function stateLabel({ step, choice, state }) {
  if (choice.kind === "mode") return ` · mode ${modeLabel(step, choice.index, show)}`;
  return state.kind === "state" ? ` · load factor ${show(state.factor)}` : "";
}

/** Hinges that are open at a point of the path of a step: { element, end } each. A path that goes on begins with those
    that the path before has left. */
export function openHinges(steps, step, point) {
  const { path } = step;
  const before = path.goes_on ? steps.slice(0, steps.indexOf(step)).findLast((other) => other.path) : null;
  const left = before ? openHinges(steps, before, Infinity) : [];
  const open = new Map(left.map((hinge) => [`${hinge.element}/${hinge.end}`, hinge]));
  for (const event of path.events ?? []) {
    if (event.point > point) continue;
    const key = `${event.element}/${event.end}`;
    if (event.kind === "closed") open.delete(key);
    else open.set(key, { element: event.element, end: event.end });
  }
  return [...open.values()];
}

/** The factor and the displacement at a state of a path. */
export const lastState = (step) => (step.path?.states?.length ?? 0) - 1;

/** Values along members: one series, or the least and the largest of an envelope: { label, values }. What is nothing
    but rounding beside the largest of its kind in the model is 0. */
export async function seriesOf(report, model, state, component) {
  const at = FORCES.indexOf(component);
  const local = ["u", "v", "w"].indexOf(component);
  if (local >= 0) return state.stationMove ? [{ label: "", values: localMove(model, state.stationMove, local) }] : [];
  const fields = state.fields.filter((field) => field.on === "station" && field.components.includes(component));
  if (!fields.length)
    return state.stationForce && at >= 0 ? [{ label: "", values: column(state.stationForce, 6, at) }] : [];
  return Promise.all(
    fields.map(async (field) => {
      const [values, sizes] = [await report.array(field.array), await sizesOf(report, field)];
      const own = column(values, field.components.length, field.components.indexOf(component));
      return {
        label: { min: "least", max: "largest" }[field.of] ?? "",
        values: own.map((value) => cleared(value, sizes(component))),
      };
    }),
  );
}

function column(values, width, at) {
  return Float32Array.from({ length: values.length / width }, (_, i) => values[width * i + at]);
}

function localMove(model, move, axis) {
  const { members } = model;
  const result = new Float32Array(move.length / 3);
  const largest = move.reduce((most, x) => (Math.abs(x) > most ? Math.abs(x) : most), 0);
  for (let member = 0; member < members.element.length; ++member) {
    const direction = members.axes.subarray(9 * member + 3 * axis, 9 * member + 3 * axis + 3);
    for (let s = members.first[member]; s < members.first[member + 1]; ++s) {
      const along = [0, 1, 2].reduce((sum, k) => sum + direction[k] * move[3 * s + k], 0);
      result[s] = cleared(along, largest);
    }
  }
  return result;
}
