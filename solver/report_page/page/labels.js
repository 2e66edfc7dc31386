// Texts beside points of the model, and the three axes in the corner. They lie above the picture, and stay at their
// points when it turns. Where two would cover each other the less important one is left out.

import { Vector3 } from "three";
import { byId, el, refill, svg } from "./dom.js";

/** Texts at points: { place, move, text, rank, className }. */
export class Labels {
  constructor(view, box, scale) {
    this.view = view;
    this.box = box;
    this.scale = scale;
    this.groups = new Map();
    view.onDraw.push(() => this.place());
  }

  set(group, labels) {
    this.groups.set(group, labels);
    const all = [...this.groups.values()].flat().sort((a, b) => b.rank - a.rank);
    this.items = all.map((label) => ({
      ...label,
      node: el("span", { class: `label ${label.className ?? ""}` }, label.text),
    }));
    refill(
      this.box,
      this.items.map((item) => item.node),
    );
    for (const item of this.items) [item.width, item.height] = [item.node.offsetWidth, item.node.offsetHeight];
    this.view.draw();
  }

  // Places count in parts of the picture, so that they hold on paper too.
  place() {
    const { clientWidth: width, clientHeight: height } = this.view.canvas;
    const taken = [];
    for (const item of this.items ?? []) {
      const move = item.move ?? [0, 0, 0];
      const [x, y] = this.view.project(...[0, 1, 2].map((k) => item.place[k] + this.scale.value * move[k]));
      // To the right of the point; at the right border to its left.
      const left = x + 5 + item.width > width ? x - 5 - item.width : x + 5;
      const rectangle = [left, y - 9, left + item.width, y - 9 + item.height];
      const covered = taken.some(
        (r) => rectangle[0] < r[2] && rectangle[2] > r[0] && rectangle[1] < r[3] && rectangle[3] > r[1],
      );
      const seen = x > 0 && y > 0 && x < width && y < height && !covered;
      item.node.hidden = !seen;
      if (!seen) continue;
      taken.push(rectangle);
      item.node.style.left = `${(100 * rectangle[0]) / width}%`;
      item.node.style.top = `${(100 * rectangle[1]) / height}%`;
    }
  }
}

/** Draws the directions of the axes into the corner of the picture. */
export function showAxes(view) {
  const box = byId("axes");
  view.onDraw.push(() => {
    const rotation = view.camera.matrixWorldInverse;
    const arms = ["x", "y", "z"].map((name, k) => {
      const arm = new Vector3(k === 0 ? 1 : 0, k === 1 ? 1 : 0, k === 2 ? 1 : 0).transformDirection(rotation);
      return { name, x: 26 * arm.x, y: -26 * arm.y, depth: arm.z };
    });
    arms.sort((a, b) => a.depth - b.depth);
    refill(
      box,
      arms.map(({ name, x, y }) => [
        svg("line", { x1: 0, y1: 0, x2: x, y2: y, class: `axis-${name}` }),
        svg("text", { x: 1.3 * x, y: 1.3 * y + 4, class: `axis-${name}` }, name),
      ]),
    );
  });
}
