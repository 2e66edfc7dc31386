// The camera, the lights' replacement, and drawing: a picture is drawn when something has changed, never else.

import { Group, NoToneMapping, OrthographicCamera, Scene, Vector3, WebGLRenderer } from "three";
import { OrbitControls } from "three/addons/controls/OrbitControls.js";
import { cornersOf } from "./model.js";

const VIEWS = {
  iso: [1, -1.25, 0.85],
  front: [0, -1, 0],
  back: [0, 1, 0],
  right: [1, 0, 0],
  left: [-1, 0, 0],
  top: [0, 0, 1],
  bottom: [0, 0, -1],
};

// Pixels that the legend takes, where the picture is wide enough to have it inside.
const LEGEND = 245, // page.css: its left and its largest width
  LEGEND_ABOVE = 600;

/** What is drawn and from where. `onDraw` are called after each picture. */
export class View {
  constructor(canvas, model) {
    this.canvas = canvas;
    this.model = model;
    this.renderer = new WebGLRenderer({ canvas, antialias: true, preserveDrawingBuffer: true });
    this.renderer.toneMapping = NoToneMapping;
    this.scene = new Scene();
    this.root = new Group();
    this.scene.add(this.root);
    this.camera = new OrthographicCamera(-1, 1, 1, -1, -10 * model.size, 10 * model.size);
    this.centre = new Vector3(...model.centre);
    this.onDraw = [];
    this.deflected = []; // corners of the box round the deflected shape, which belongs into the picture too
    this.beyond = []; // and points of diagrams
    this.wanted = false;
    this.held = true; // until all is there for the first picture
    this.up = "z";
    this.makeControls();
    this.look("iso");
    new ResizeObserver(() => this.resize()).observe(canvas.parentElement);
    canvas.addEventListener("keydown", (event) => this.key(event));
    this.resize();
  }

  makeControls() {
    const target = this.controls?.target.clone() ?? this.centre.clone();
    this.controls?.dispose();
    this.camera.up.set(0, this.up === "y" ? 1 : 0, this.up === "z" ? 1 : 0);
    this.controls = new OrbitControls(this.camera, this.canvas);
    this.controls.target.copy(target);
    this.controls.zoomToCursor = true;
    this.controls.enableDamping = false;
    this.controls.addEventListener("change", () => this.draw());
    this.controls.addEventListener("start", () => (this.fitted = false));
  }

  setUp(axis) {
    if (this.up === axis) return;
    this.up = axis;
    this.makeControls();
    this.look("iso");
  }

  /** One of the standard directions, with the whole model in the picture. */
  look(name) {
    let [x, y, z] = VIEWS[name];
    if (this.up === "y") [x, y, z] = [x, z, -y];
    const direction = new Vector3(x, y, z).normalize();
    this.controls.target.copy(this.centre);
    this.camera.position.copy(this.centre).addScaledVector(direction, 3 * this.model.size);
    this.fit();
  }

  /** Brings the whole model into the picture, with room for legend and symbols. */
  fit() {
    this.controls.target.copy(this.centre);
    this.controls.update();
    this.camera.updateMatrixWorld();
    const inverse = this.camera.matrixWorldInverse.copy(this.camera.matrixWorld).invert();
    const { low, high } = this.model;
    let width = 0,
      height = 0;
    for (const place of [...cornersOf(low, high), ...this.deflected, ...this.beyond]) {
      const point = new Vector3(...place).applyMatrix4(inverse);
      width = Math.max(width, Math.abs(point.x));
      height = Math.max(height, Math.abs(point.y));
    }
    const [side, over] = this.room();
    const more = this.model.members.element.length ? 0.1 * this.model.size : 0; // for diagrams and sway
    this.half = Math.max(height * 1.25, (width * 1.12 + more) / side, 0.05 * this.model.size);
    this.camera.zoom = 1;
    this.fitted = true;
    this.frame(side, over);
  }

  /** Whether one of the points lies outside of the picture, or behind the legend. */
  leaves(points) {
    this.camera.updateMatrixWorld();
    const { clientWidth: width, clientHeight: height } = this.canvas;
    const left = width > LEGEND_ABOVE ? LEGEND : 0;
    return points.some((point) => {
      const [x, y] = this.project(...point);
      return x < left || x > width || y < 0 || y > height;
    });
  }

  // Half the width of the picture beside the legend, and the width of the legend, over half the height.
  room() {
    const width = Math.max(1, this.canvas.clientWidth),
      height = Math.max(1, this.canvas.clientHeight);
    const legend = width > LEGEND_ABOVE ? LEGEND : 0;
    return [(width - legend) / height, (2 * legend) / height];
  }

  frame(...room) {
    const [side, over] = room.length ? room : this.room();
    const half = this.half ?? this.model.size;
    Object.assign(this.camera, { left: -half * (side + over), right: half * side, top: half, bottom: -half });
    this.camera.updateProjectionMatrix();
    this.draw();
  }

  resize() {
    const { clientWidth, clientHeight } = this.canvas.parentElement;
    if (!clientWidth || !clientHeight) return;
    this.renderer.setPixelRatio(Math.min(2, window.devicePixelRatio || 1));
    this.renderer.setSize(clientWidth, clientHeight, false);
    // A window of another shape: who has not moved the view keeps the whole model in it.
    if (this.fitted) this.fit();
    else this.frame();
  }

  key(event) {
    const turn = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] }[event.key];
    if (turn) this.turn(0.12 * turn[0], 0.12 * turn[1]);
    else if (event.key === "+" || event.key === "=") this.zoom(1.2);
    else if (event.key === "-") this.zoom(1 / 1.2);
    else if (event.key === "f" || event.key === "F" || event.key === "Home") this.fit();
    else return;
    event.preventDefault();
  }

  turn(around, over) {
    this.fitted = false;
    const arm = this.camera.position.clone().sub(this.controls.target);
    arm.applyAxisAngle(this.camera.up, around);
    const side = new Vector3().crossVectors(this.camera.up, arm).normalize();
    const turned = arm.clone().applyAxisAngle(side, over);
    if (turned.clone().normalize().cross(this.camera.up).length() > 0.05) arm.copy(turned);
    this.camera.position.copy(this.controls.target).add(arm);
    this.controls.update();
    this.draw();
  }

  zoom(factor) {
    this.fitted = false;
    this.camera.zoom *= factor;
    this.camera.updateProjectionMatrix();
    this.draw();
  }

  background(colour) {
    this.renderer.setClearColor(colour, 1);
  }

  /** Asks for a picture; several wishes before the next one are one. */
  draw() {
    if (this.wanted || this.held) return;
    this.wanted = true;
    requestAnimationFrame(() => {
      if (this.wanted) this.drawNow();
    });
  }

  drawNow() {
    this.wanted = this.held = false;
    this.renderer.render(this.scene, this.camera);
    for (const then of this.onDraw) then();
  }

  /** Pixels from the left and the top of the picture, and the depth from -1 to 1. */
  project(x, y, z) {
    const point = new Vector3(x, y, z).project(this.camera);
    return [0.5 * (point.x + 1) * this.canvas.clientWidth, 0.5 * (1 - point.y) * this.canvas.clientHeight, point.z];
  }

  /** The colours of pixels [x, y], red, green, blue from 0 to 255. */
  colours(places) {
    this.drawNow();
    const gl = this.renderer.getContext();
    const ratio = this.renderer.getPixelRatio();
    const { width, height } = this.canvas;
    const all = new Uint8Array(4 * width * height);
    gl.readPixels(0, 0, width, height, gl.RGBA, gl.UNSIGNED_BYTE, all);
    return places.map(([x, y]) => {
      const at = 4 * ((height - 1 - Math.floor(y * ratio)) * width + Math.floor(x * ratio));
      return [...all.subarray(at, at + 3)];
    });
  }
}
