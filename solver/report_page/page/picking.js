// What lies under the pointer: the elements are drawn once more into one pixel, with their numbers as colours,
// displaced and hidden as they are seen. The node is the nearest one of the element, if it is near enough.

import { Mesh, NearestFilter, Scene, WebGLRenderTarget } from "three";
import { pickMaterial } from "./materials.js";
import { nodesOf } from "./model.js";

const NEAR = 12; // pixels

/** Finds elements and nodes in a picture. */
export class Picker {
  constructor(view, model) {
    this.view = view;
    this.model = model;
    this.material = pickMaterial();
    this.target = new WebGLRenderTarget(1, 1, { minFilter: NearestFilter, magFilter: NearestFilter });
  }

  /** The element at a pixel of the picture; -1 without one. */
  elementAt(x, y, surfaces) {
    const { renderer, camera, canvas } = this.view;
    const scene = new Scene();
    for (const surface of surfaces) {
      const mesh = new Mesh(surface.geometry, this.material);
      mesh.frustumCulled = false;
      scene.add(mesh);
    }
    const clear = renderer.getClearColor(this.view.centre.clone()),
      alpha = renderer.getClearAlpha();
    camera.setViewOffset(canvas.clientWidth, canvas.clientHeight, Math.floor(x), Math.floor(y), 1, 1);
    renderer.setRenderTarget(this.target);
    renderer.setClearColor(0, 0);
    renderer.clear();
    renderer.render(scene, camera);
    const pixel = new Uint8Array(4);
    renderer.readRenderTargetPixels(this.target, 0, 0, 1, 1, pixel);
    renderer.setRenderTarget(null);
    renderer.setClearColor(clear, alpha);
    camera.clearViewOffset();
    return pixel[0] + 256 * pixel[1] + 65536 * pixel[2] - 1;
  }

  /** The node of a list that is nearest to a pixel; -1, if none is near. `move` are displacements times their scale. */
  nearest(x, y, nodes, move, scale) {
    const { xyz } = this.model.nodes;
    let best = -1,
      least = NEAR * NEAR,
      depth = Infinity;
    for (const node of nodes) {
      const at = [0, 1, 2].map((k) => xyz[3 * node + k] + (move ? scale * move[3 * node + k] : 0));
      const [px, py, pz] = this.view.project(...at);
      const distance = (px - x) ** 2 + (py - y) ** 2;
      if (distance < least - 1 || (distance < least + 1 && best >= 0 && pz < depth)) {
        [best, least, depth] = [node, distance, pz];
      }
    }
    return best;
  }

  /** { node } or { element } under a pixel, or nothing. */
  at(x, y, surfaces, move, scale) {
    const element = this.elementAt(x, y, surfaces);
    const all = element >= 0 ? nodesOf(this.model, element) : this.everyNode();
    const node = this.nearest(x, y, all, move, scale);
    if (node >= 0) return { node, element };
    return element >= 0 ? { element } : null;
  }

  everyNode() {
    return (this.nodes ??= Array.from({ length: this.model.nodeCount }, (_, i) => i));
  }
}
