import { heightStops } from '../colors/colors';

export const maxRing = 64;

/** Points as discs as wide as the gaps between them; what the clip box leaves out is not drawn. */
export const pointVertex = `
precision highp float;
precision highp int;
in vec4 position;
in vec4 color;
uniform mat4 modelViewMatrix;
uniform mat4 projectionMatrix;
uniform float uPixels;       // device pixels between points, at distance 1 where the view is perspective
uniform bool uParallel;
uniform vec2 uSizeRange;
uniform bool uByHeight;
uniform vec2 uHeight;        // share of the height range at the tile's centre, and a step
uniform vec3 uRamp[${heightStops.length}];
uniform bool uClip;
uniform vec3 uClipMin;       // steps from the tile's centre
uniform vec3 uClipMax;
uniform int uRingCount;
uniform vec2 uRing[${maxRing}];
uniform vec3 uAccent;
uniform float uBall;         // 1: large points are shaded at their rims, 0: they are not
uniform float uScale;        // device pixels a CSS pixel
out vec4 vColor;
out float vBall;

vec3 rampColor(float share) {
    float pos = clamp(share, 0.0, 1.0) * ${(heightStops.length - 1).toFixed(1)};
    int n = min(int(pos), ${heightStops.length - 2});
    return mix(uRamp[n], uRamp[n + 1], pos - float(n));
}

bool inRing(vec2 place) {
    bool inside = false;
    vec2 b = uRing[uRingCount - 1];
    for (int i = 0; i < uRingCount; ++i) {
        vec2 a = uRing[i];
        if ((a.y > place.y) != (b.y > place.y) && place.x < (b.x - a.x) * (place.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
        b = a;
    }
    return inside;
}

void main() {
    vec3 place = position.xyz;
    if (uClip && (any(lessThan(place, uClipMin)) || any(greaterThan(place, uClipMax)))) {
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
        gl_PointSize = 0.0;
        return;
    }
    vec4 seen = modelViewMatrix * vec4(place, 1.0);
    gl_Position = projectionMatrix * seen;
    float gap = uParallel ? uPixels : uPixels / max(-seen.z, 1e-9);
    float size = clamp(gap, uSizeRange.x, uSizeRange.y);
    gl_PointSize = size;
    // Points that no longer close a surface are shaded as balls, others hardly.
    vBall = uBall * smoothstep(9.0, 22.0, size / uScale) * mix(0.8, 3.6, smoothstep(1.0, 1.8, gap / uSizeRange.y));
    vec3 shown = uByHeight ? rampColor(uHeight.x + place.z * uHeight.y) : color.rgb;
    if (uRingCount > 2 && inRing(place.xy))
        shown = mix(shown, uAccent, 0.6);
    vColor = vec4(shown, size / 64.0);
}`;

export const pointFragment = `
precision highp float;
in vec4 vColor;
in float vBall;
out vec4 outColor;
void main() {
    vec2 at = gl_PointCoord - 0.5;
    if (vColor.a > 2.6 / 64.0 && dot(at, at) > 0.25)
        discard;
    outColor = vec4(vColor.rgb * (1.0 - vBall * dot(at, at) * dot(at, at)), vColor.a);
}`;

export const screenVertex = `
in vec3 position;
void main() { gl_Position = vec4(position.xy, 0.0, 1.0); }`;

const depthReading = `
precision highp float;
uniform sampler2D uColor;
uniform sampler2D uDepth;
uniform vec2 uNearFar;
uniform bool uParallel;
uniform float uFocal;        // device pixels a unit, at distance 1 where the view is perspective

float linearDepth(float d) {
    float n = uNearFar.x;
    float f = uNearFar.y;
    return uParallel ? mix(n, f, d) : n * f / (f - d * (f - n));
}
ivec2 within(ivec2 at) {
    return clamp(at, ivec2(0), textureSize(uColor, 0) - 1);
}
bool isEmpty(ivec2 at) {
    return texelFetch(uColor, within(at), 0).a == 0.0;
}
float depthAt(ivec2 at, float other) {
    ivec2 p = within(at);
    return texelFetch(uColor, p, 0).a == 0.0 ? other : linearDepth(texelFetch(uDepth, p, 0).r);
}`;

/** Of how many pixels' width and height a pixel of the noise picture tells. */
export const noiseCell = 4;

/**
 * Where kinks are all over a surface, as in the steps of depth cameras, they are noise: how much of it, 0 to 1. Kinks
 * too large for that, as of trees and eaves, speak against it.
 */
export const noiseFragment = `${depthReading}
out vec4 outColor;

// How much a surface bends at a pixel, in widths of its points.
float bendAt(ivec2 p, float d, float size, int n) {
    float x = 0.5 * (depthAt(p + ivec2(n, 0), d) + depthAt(p - ivec2(n, 0), d)) - d;
    float y = 0.5 * (depthAt(p + ivec2(0, n), d) + depthAt(p - ivec2(0, n), d)) - d;
    float perUnit = uParallel ? uFocal : uFocal / d;
    return max(abs(x), abs(y)) * perUnit / size;
}

void main() {
    ivec2 at = ivec2(gl_FragCoord.xy * ${noiseCell.toFixed(1)});
    float count = 0.0;
    float kinks = 0.0;
    float size = max(2.0, texelFetch(uColor, within(at), 0).a * 64.0);
    int n = max(1, int(0.6 * size + 0.5));
    for (int y = -3; y <= 3; ++y)
        for (int x = -3; x <= 3; ++x) {
            ivec2 p = within(at + ivec2(x, y) * 2 * n);
            if (isEmpty(p))
                continue;
            float bend = bendAt(p, depthAt(p, 1.0), size, n);
            count += 1.0;
            kinks += bend > 6.0 ? -1.5 : (bend > 0.8 ? 1.0 : 0.0);
        }
    outColor = vec4(smoothstep(0.05, 0.2, kinks / max(count, 1.0)), 0.0, 0.0, 1.0);
}`;

/** Depth shading: eye-dome lighting and soft light from the upper left, over the surround. */
export const shadeFragment = `${depthReading}
uniform vec3 uBackground;
uniform float uStrength;
uniform float uScale;        // device pixels a CSS pixel
uniform sampler2D uNoise;
out vec4 outColor;

// Closes gaps a few pixels wide: a pixel without a point takes the nearest in depth of its neighbours, where these lie
// around it.
ivec2 findPoint(ivec2 at) {
    if (!isEmpty(at))
        return at;
    ivec2 best = ivec2(-1);
    float nearest = 1e30;
    int sides = 0;
    for (int k = 0; k < 8; ++k) {
        ivec2 d = ivec2(k < 3 ? 1 : (k < 5 ? 0 : -1), k == 0 || k == 3 || k == 5 ? 1 : (k == 1 || k == 6 ? 0 : -1));
        bool found = false;
        for (int r = 1; r <= 2 && !found; ++r) {
            ivec2 p = at + d * r;
            if (isEmpty(p))
                continue;
            found = true;
            float depth = depthAt(p, 1e30);
            if (depth < nearest) {
                nearest = depth;
                best = p;
            }
        }
        sides += found ? 1 : 0;
    }
    return sides >= 6 ? best : ivec2(-1);
}

// Depth smoothed among neighbours on the same surface: discs are flat, and would show as steps.
float smoothDepth(ivec2 at, float middle, float reach, int n) {
    float sum = middle;
    float weight = 1.0;
    for (int y = -1; y <= 1; ++y)
        for (int x = -1; x <= 1; ++x) {
            float d = depthAt(at + ivec2(x, y) * n, middle);
            float w = abs(d - middle) < reach ? 1.0 : 0.0;
            sum += w * d;
            weight += w;
        }
    return sum / weight;
}

void main() {
    ivec2 at = findPoint(ivec2(gl_FragCoord.xy));
    if (at.x < 0) {
        outColor = vec4(uBackground, 1.0);
        return;
    }
    vec4 texel = texelFetch(uColor, at, 0);
    if (uStrength <= 0.0) {
        outColor = vec4(texel.rgb, 1.0);
        return;
    }
    float size = texel.a * 64.0;
    float depth = linearDepth(texelFetch(uDepth, at, 0).r);
    float perUnit = uParallel ? uFocal : uFocal / depth;
    int n = max(int(uScale + 0.5), int(0.6 * size + 0.5));
    float share = texture(uNoise, gl_FragCoord.xy / vec2(textureSize(uColor, 0))).r;
    float noise = mix(0.45, 4.5, share) * size; // in pixels: rough surfaces and flat discs bend by no more

    const ivec2 dirs[4] = ivec2[4](ivec2(1, 0), ivec2(0, 1), ivec2(1, 1), ivec2(1, -1));
    const int radii[3] = int[3](1, 2, 5);
    const float weights[3] = float[3](0.5, 0.5, 0.35);
    float behind = 0.0;
    for (int k = 0; k < 3; ++k) {
        int r = radii[k] * n;
        float sum = 0.0;
        for (int i = 0; i < 4; ++i) {
            float f1 = depthAt(at + r * dirs[i], depth);
            float f2 = depthAt(at - r * dirs[i], depth);
            float below = ((depth - 0.5 * (f1 + f2)) * perUnit - noise) / float(r);
            sum += clamp(below, 0.0, 1.2);
        }
        behind += weights[k] * sum * 0.25;
    }
    // Points too large to close a surface are single balls: what shades surfaces would cut them into wedges.
    float ball = smoothstep(12.0, 24.0, size / uScale);
    float strength = uStrength * (1.0 - 0.8 * ball);
    float dome = exp(-strength * 0.9 * (1.0 - 0.6 * share) * behind);

    int m = 2 * n;
    float reach = 3.0 * float(m) / perUnit;
    float middle = depth;
    float right = 0.5 * (smoothDepth(at + ivec2(m, 0), depthAt(at + ivec2(m, 0), middle), reach, n)
                - smoothDepth(at - ivec2(m, 0), depthAt(at - ivec2(m, 0), middle), reach, n)) * perUnit / float(m);
    float up = 0.5 * (smoothDepth(at + ivec2(0, m), depthAt(at + ivec2(0, m), middle), reach, n)
             - smoothDepth(at - ivec2(0, m), depthAt(at - ivec2(0, m), middle), reach, n)) * perUnit / float(m);
    vec3 normal = normalize(vec3(clamp(right, -1.5, 1.5), clamp(up, -1.5, 1.5), 1.0));
    float lit = clamp(dot(normal, vec3(-0.45, 0.60, 1.0)), 0.0, 1.35);
    float byLight = strength * 0.42 * (1.0 - 0.85 * share);
    outColor = vec4(texel.rgb * dome * (1.0 - byLight + byLight * lit), 1.0);
}`;
