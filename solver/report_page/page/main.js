import { Vector3 } from "three";
import { OrbitControls } from "three/addons/controls/OrbitControls.js";
import { WebGLRenderer } from "three";
console.log(new Vector3(), OrbitControls, WebGLRenderer);
