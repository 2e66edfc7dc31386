// Materials: every vertex has its place and its displacement, which one number multiplies in the shader. The slider of
// the deflection and the motion of modes change that number and nothing else.

import { DoubleSide, GLSL3, NoBlending, RawShaderMaterial, ShaderMaterial, Vector3 } from "three";
import { textureOf } from "./colours.js";

/** What no value has: interpolation leaves it far from all values. */
export const MISSING = 3e38;

/** What all materials share; the objects are the uniforms themselves. */
export const shared = {
  scale: { value: 1 },
  map: { value: null },
  low: { value: 0 },
  high: { value: 1 },
  bands: { value: 0 },
  shading: { value: 1 },
  mode: { value: 0 }, // 0 values, 1 colours of groups, 2 plain
  plain: { value: new Vector3(0.7, 0.72, 0.75) },
};

/** Takes another colour map. */
export function chooseMap(name) {
  shared.map.value?.dispose();
  shared.map.value = textureOf(name);
}

const LIGHT = `
  float lightOf(vec3 place) {
    vec3 normal = normalize(cross(dFdx(place), dFdy(place)));
    return mix(1.0, 0.5 + 0.5 * abs(dot(normal, normalize(vec3(0.25, 0.45, 1.0)))), shading);
  }`;

const SURFACE_VERTEX = `
  uniform float scale;
  attribute vec3 move;
  attribute float value;
  attribute vec3 tint;
  varying float vValue;
  varying vec3 vTint;
  varying vec3 vPlace;
  void main() {
    vec4 place = modelViewMatrix * vec4(position + scale * move, 1.0);
    vPlace = place.xyz;
    vValue = value;
    vTint = tint;
    gl_Position = projectionMatrix * place;
  }`;

const SURFACE_FRAGMENT = `
  uniform sampler2D map;
  uniform float low, high, bands, shading;
  uniform int mode;
  uniform vec3 plain;
  varying float vValue;
  varying vec3 vTint;
  varying vec3 vPlace;
  ${LIGHT}
  void main() {
    vec3 colour = mode == 1 ? vTint : plain;
    if (mode == 0) {
      float t = high > low ? clamp((vValue - low) / (high - low), 0.0, 1.0) : 0.5;
      if (bands > 0.0) t = (floor(min(t * bands, bands - 0.5)) + 0.5) / bands;
      colour = vValue < 1e37 ? texture2D(map, vec2((t * 255.0 + 0.5) / 256.0, 0.5)).rgb : vec3(0.62);
    }
    gl_FragColor = vec4(colour * lightOf(vPlace), 1.0);
  }`;

/** Faces of plates and solids, and members. */
export function surfaceMaterial() {
  return new ShaderMaterial({
    uniforms: shared,
    vertexShader: SURFACE_VERTEX,
    fragmentShader: SURFACE_FRAGMENT,
    side: DoubleSide,
    polygonOffset: true,
    polygonOffsetFactor: 1,
    polygonOffsetUnits: 2,
  });
}

/** Writes the number of the element in the place of a colour. */
export function pickMaterial() {
  return new RawShaderMaterial({
    glslVersion: GLSL3,
    uniforms: { scale: shared.scale },
    side: DoubleSide,
    blending: NoBlending,
    vertexShader: `
      precision highp float;
      uniform float scale;
      uniform mat4 modelViewMatrix, projectionMatrix;
      in vec3 position, move;
      in float element;
      flat out float vElement;
      void main() {
        vElement = element + 1.0;
        gl_Position = projectionMatrix * modelViewMatrix * vec4(position + scale * move, 1.0);
      }`,
    fragmentShader: `
      precision highp float;
      flat in float vElement;
      out vec4 colour;
      void main() {
        float n = floor(vElement + 0.5);
        colour = vec4(mod(n, 256.0), mod(floor(n / 256.0), 256.0), mod(floor(n / 65536.0), 256.0), 255.0) / 255.0;
      }`,
  });
}

/** Lines; with `tinted` every vertex has its colour. `scale` is another uniform for lines that stay at rest. */
export function lineMaterial({
  colour = new Vector3(),
  opacity = 1,
  tinted = false,
  scale = shared.scale,
  onTop = false,
} = {}) {
  return new ShaderMaterial({
    uniforms: { scale, colour: { value: colour }, opacity: { value: opacity } },
    defines: tinted ? { TINTED: 1 } : {},
    transparent: opacity < 1,
    depthTest: !onTop,
    depthWrite: opacity === 1,
    vertexShader: `
      uniform float scale;
      attribute vec3 move;
      attribute vec3 tint;
      varying vec3 vTint;
      void main() {
        vTint = tint;
        gl_Position = projectionMatrix * modelViewMatrix * vec4(position + scale * move, 1.0);
      }`,
    fragmentShader: `
      uniform vec3 colour;
      uniform float opacity;
      varying vec3 vTint;
      void main() {
        #ifdef TINTED
          gl_FragColor = vec4(vTint, opacity);
        #else
          gl_FragColor = vec4(colour, opacity);
        #endif
      }`,
  });
}

/** Ribbons of diagrams: colours of their vertices, one sees through. */
export function ribbonMaterial(opacity) {
  const material = lineMaterial({ tinted: true, opacity });
  material.side = DoubleSide;
  material.depthWrite = false;
  return material;
}

/** Symbols: one shape, turned along the direction of each instance, as long as it says. */
export function symbolMaterial({ onTop = false } = {}) {
  return new ShaderMaterial({
    uniforms: { scale: shared.scale, shading: shared.shading },
    side: DoubleSide,
    depthTest: !onTop,
    vertexShader: `
      uniform float scale;
      attribute vec3 place, move, direction, tint;
      attribute float size;
      varying vec3 vTint, vPlace;
      void main() {
        vec3 z = normalize(direction);
        vec3 side = abs(z.z) < 0.9 ? vec3(0.0, 0.0, 1.0) : vec3(1.0, 0.0, 0.0);
        vec3 x = normalize(cross(side, z));
        vec3 y = cross(z, x);
        vec3 at = place + scale * move + size * (position.x * x + position.y * y + position.z * z);
        vec4 view = modelViewMatrix * vec4(at, 1.0);
        vTint = tint;
        vPlace = view.xyz;
        gl_Position = projectionMatrix * view;
      }`,
    fragmentShader: `
      uniform float shading;
      varying vec3 vTint, vPlace;
      ${LIGHT}
      void main() { gl_FragColor = vec4(vTint * lightOf(vPlace), 1.0); }`,
  });
}
