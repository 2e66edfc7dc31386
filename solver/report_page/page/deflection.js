// The scale of the deflected shape: automatic, by a slider, exactly 1; and the motion of modes.

import { roundDown } from "./format.js";
import { shared } from "./materials.js";
import { boxOf, cornersOf } from "./model.js";

const SHARE = 0.1; // largest displacement over the size of the model
const MIDDLE = 60,
  DECADE = 20; // of the slider from 0 to 100

function largest(values) {
  let most = 0;
  for (let i = 0; i + 2 < (values?.length ?? 0); i += 3) {
    const size = Math.hypot(values[i], values[i + 1], values[i + 2]);
    if (size > most) most = size;
  }
  return most;
}

/** A round number that makes the displacements visible; 1 where they are large anyway, and for cables: multiplied, the
    displacements of a hanging cable make it another curve, with kinks at its nodes. */
export function automaticScale(model, state, stationMove) {
  if (state.kind !== "mode" && model.sections.some((section) => section.kind === "cable")) return 1;
  const most = Math.max(largest(state.displacement), largest(stationMove));
  if (!(most > 0)) return 1;
  const scale = roundDown((SHARE * model.size) / most);
  return state.kind === "mode" || scale > 1 ? scale : 1;
}

/** The corners of the box round the deflected shape, of a mode to both sides. */
export function deflectedBox(model, state, scale) {
  const { xyz } = model.nodes;
  const move = state.displacement;
  if (move?.length !== xyz.length) return [];
  const sides = state.kind === "mode" ? [scale, -scale] : [scale];
  return sides.flatMap((factor) => {
    const { low, high } = boxOf(xyz.map((x, i) => x + factor * move[i]));
    return cornersOf(low, high);
  });
}

/** The scale at a place of the slider: 0 at its left end, the automatic one in its middle. */
export const scaleAt = (place, automatic) => (place <= 0 ? 0 : automatic * 10 ** ((place - MIDDLE) / DECADE));

/** The place of a scale on the slider. */
export function placeOfScale(scale, automatic) {
  return scale > 0 ? Math.min(100, Math.max(1, MIDDLE + DECADE * Math.log10(scale / automatic))) : 0;
}

/** Moves the shape: modes to both sides, other displacements from rest to their end and back. */
export class Motion {
  constructor(app) {
    this.app = app;
    this.on = false;
  }

  set(on) {
    if (this.on === on) return;
    this.on = on;
    if (on)
      requestAnimationFrame((now) => {
        this.start = now;
        this.step(now);
      });
    else shared.scale.value = this.app.scale;
    this.app.view.draw();
  }

  step(now) {
    if (!this.on) return;
    const angle = ((now - this.start) / 1600) * 2 * Math.PI;
    const part = this.app.state.kind === "mode" ? Math.sin(angle) : 0.5 * (1 - Math.cos(angle));
    shared.scale.value = this.app.scale * part;
    this.app.view.drawNow();
    requestAnimationFrame((next) => this.step(next));
  }
}
