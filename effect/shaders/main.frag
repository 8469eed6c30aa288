#version 330
// The image: noise gives a height field, two layers modify it, a gradient or a layer colours it, and isolines
// of the same field are drawn over the colour. The result has straight alpha; blending premultiplies it.

#define colorizeModeGradient 1
#define colorizeModeGradientFromLayer 2
#define colorizeModeReflectionFromLayer 3
#define colorizeModeRefractionFromLayer 4

in vec2 out_uvs;  // 0 to 1 over the whole frame, y down the image

out vec4 colourOut;

// Flags are on at exactly 1. Thresholds, offsets and factors are fractions of 1 unless a unit is named.
uniform float multiplier16bit;  // scales a layer sample to 0 to 1
uniform vec2 size;              // output pixels; set for every frame, not read

uniform int noiseType;          // 1 Fluid, 2 Voronoi, 3 Smoke, 4 Worley
uniform float noiseContrast;    // percent
uniform float noiseBrightness;  // percent
uniform float evolution;        // degrees, whole turns included
uniform int loopEvolution;
uniform int complexity;
uniform float fluidSpeed;
uniform vec2 scale;
uniform float offsetX;
uniform float offsetY;

uniform sampler2D inputTexture1;  // layers: host's channel order, alpha first
uniform sampler2D inputTexture2;
uniform sampler2D inputTexture3;
uniform int useLayer1;
uniform int useLayer2;
uniform int useLayer3;
uniform int useLayer4;  // there is no fourth layer; neither set nor read
uniform float layer1Mult;
uniform float layer2Mult;
uniform int layer1LightnessInvert;
uniform int layer2LightnessInvert;
uniform int layer1AlphaInvert;
uniform int layer2AlphaInvert;
uniform float alphaThreshold;

uniform int noiseVisible;
uniform int noiseBottomCroppingEnabled;
uniform float noiseBottomCroppingThreshold;
uniform float noiseBottomCroppingFeather;
uniform int noiseTopCroppingEnabled;
uniform float noiseTopCroppingThreshold;
uniform float noiseTopCroppingFeather;
uniform int colorizeMode;
uniform sampler2D noiseGradientTexture;  // ramps: 2048 x 1, red first
uniform float noiseGradientOffset;
uniform float noiseGradientScale;
uniform float noiseGradientScaleBase;
uniform int noiseGradientLoop;
uniform float gradientRandomizeFrequency;
uniform float gradientRandomizeAmplitude;
uniform float reflectionScale;

uniform float linesVisible;  // a float where noiseVisible is an int; on at exactly 1.0
uniform int linesCount;
uniform float linesWidth;  // output pixels
uniform float linesAlpha;
uniform float linesOffset;
uniform int linesLoop;       // 0 clamps the shifted height, anything else lets contours repeat
uniform int linesBlendMode;  // 1 normal, 2 add, 3 multiply
uniform int linesBottomCroppingEnabled;
uniform float linesBottomCroppingThreshold;
uniform float linesBottomCroppingFeather;
uniform int linesTopCroppingEnabled;
uniform float linesTopCroppingThreshold;
uniform float linesTopCroppingFeather;
uniform sampler2D linesGradientTexture;
uniform float linesGradientOffset;
uniform float linesGradientScale;
uniform float linesGradientScaleBase;
uniform int linesGradientLoop;
uniform float linesRandomize;
uniform float gradientRandomize;
uniform float widthRandomize;
uniform float alphaRandomize;
uniform float randomSeed;
uniform int linesAlphaNoiseType;
uniform float linesAlphaNoiseEvolution;  // degrees, whole turns included
uniform int linesAlphaNoiseLoopEvolution;
uniform int linesAlphaNoiseComplexity;
uniform float linesAlphaNoiseSpeed;
uniform vec2 linesAlphaNoiseScale;
uniform vec2 linesAlphaNoiseOffset;
uniform float linesAlphaThreshold;

// Software drivers execute every branch in every pixel, under a mask: only the end of a loop jumps. So a loop
// that runs at least once is tested at its end, as its body would otherwise run once more with an empty mask.
// For the same reason such drivers get a text for each look, in which switches declared here are constants.
// docs/performance.md explains it.

// ---- Work that a frame may leave out ----

// Where one of these is false, leaving out the work changes no bit of the result.
bool positionsJitter = gradientRandomizeAmplitude != 0.0;
bool linesJitter = linesRandomize != 0.0;
bool lineColorsJitter = gradientRandomize != 0.0;
bool lineWidthsJitter = widthRandomize != 0.0 || isinf(linesWidth);
bool lineMasksJitter = alphaRandomize != 0.0;

// Outside of this range the noise can overflow to NaN, which is below every threshold.
bool alphaNoiseIsFinite = max(abs(linesAlphaNoiseEvolution), abs(linesAlphaNoiseSpeed)) < 1e6 &&
                          all(lessThan(abs(linesAlphaNoiseScale), vec2(1e6))) &&
                          all(lessThan(abs(linesAlphaNoiseOffset), vec2(1e6))) &&
                          abs(alphaRandomize) < 1e6;
// Fluid and Smoke are never negative.
bool linesMasked = !((linesAlphaNoiseType == 1 || linesAlphaNoiseType == 3) && linesAlphaThreshold <= 0.0 &&
                     alphaNoiseIsFinite);

// ---- Hashes ----

// 0 to 1. The second factor is small on purpose: the numbers of neighbouring seeds are correlated.
float rand(vec2 n) {
    return fract(sin(dot(n, vec2(12.9898, 4.1414))) * 43758.5453);
}

// 0 to 1. Called by nothing.
float hash1(float n) {
    return fract(sin(n) * 43758.5453);
}

// 0 to 1 on both components.
vec2 hash2(vec2 p) {
    p = vec2(dot(p, vec2(127.1, 311.7)), dot(p, vec2(269.5, 183.3)));
    return fract(sin(p) * 43758.5453);
}

const uint UI0 = 1597334673U;
const uint UI1 = 3812015801U;
const uvec3 UI3 = uvec3(UI0, UI1, 2798796415U);
const float UIF = 1.0 / float(0xffffffffU);

// -1 to 1 on all components. Converts to integers on purpose: the fraction of p has no effect.
vec3 hash33(vec3 p) {
    uvec3 q = uvec3(ivec3(p)) * UI3;
    uint mixed = q.x ^ q.y ^ q.z;
    return -1.0 + 2.0 * vec3(mixed * UI3) * UIF;
}

// ---- Fluid ----

// 0 to 1: a sine product whose coordinates are warped complexity - 1 times.
float fliud_noise(vec2 p, float evolution, float fluidSpeed, vec2 scale, int complexity) {
    int i = 1;
    if (i < complexity) {
        do {
            float turn = float(i);
            vec2 newp = p + evolution * 0.001;
            newp.x += scale.x / turn * sin(turn * p.y + evolution * fluidSpeed + 0.3 * turn) + 0.5;
            newp.y += scale.y / turn * sin(turn * p.x + evolution * fluidSpeed + 0.3 * (turn + 10.0)) - 0.5;
            p = newp;
            i++;
        } while (i < complexity);
    }
    return sin(1.6 * p.x) * sin(1.6 * p.y) / 2.0 + 0.5;
}

// ---- Voronoi ----

// Cells under a smooth minimum of width w. It is not symmetric, so the order of the cells matters.
// At w = 0 the division overflows and the minimum becomes a hard one.
float voronoi(vec2 x, float evolution, float w) {
    vec2 n = floor(x);
    vec2 f = fract(x);
    vec4 m = vec4(8.0, 0.0, 0.0, 0.0);  // distance so far, colour so far
    int j = -2;
    do {
        int i = -2;
        do {
            vec2 g = vec2(float(i), float(j));
            vec2 o = hash2(n + g);
            o = 0.5 + 0.5 * sin(evolution + 6.2831 * o);
            float d = length(g - f + o);
            vec3 col = vec3(1.0, 1.0, 1.0);
            float h = smoothstep(0.0, 1.0, 0.5 + 0.5 * (m.x - d) / w);
            float correction = h * (1.0 - h) * w / (1.0 + 3.0 * w);
            m.x = mix(m.x, d, h) - correction;
            m.yzw = mix(m.yzw, col, h) - correction;
            i++;
        } while (i <= 2);
        j++;
    } while (j <= 2);
    return m.y * (1.0 - 0.8 * m.x);
}

// ---- Simplex noise and its sums ----

vec3 mod289(vec3 x) {
    return x - floor(x * (1.0 / 289.0)) * 289.0;
}

vec4 mod289(vec4 x) {
    return x - floor(x * (1.0 / 289.0)) * 289.0;
}

vec4 permute(vec4 x) {
    return mod289(((x * 34.0) + 1.0) * x);
}

vec4 taylorInvSqrt(vec4 r) {
    return 1.79284291400159 - 0.85373472095314 * r;
}

// About -1 to 1. Without textures: lattice points are hashed by a permutation polynomial, gradients are on a
// 7 x 7 grid folded onto an octahedron. The kernel is slightly larger than the cell, which leaves faint seams.
float simplex(vec3 v) {
    const vec2 C = vec2(1.0 / 6.0, 1.0 / 3.0);
    const vec4 D = vec4(0.0, 0.5, 1.0, 2.0);

    vec3 i = floor(v + dot(v, C.yyy));
    vec3 x0 = v - i + dot(i, C.xxx);

    // The two middle corners follow from the rank of the coordinates.
    vec3 g = step(x0.yzx, x0.xyz);
    vec3 l = 1.0 - g;
    vec3 i1 = min(g.xyz, l.zxy);
    vec3 i2 = max(g.xyz, l.zxy);
    vec3 x1 = x0 - i1 + C.xxx;
    vec3 x2 = x0 - i2 + 2.0 * C.xxx;
    vec3 x3 = x0 - D.yyy;

    i = mod289(i);
    vec4 p = permute(i.z + vec4(0.0, i1.z, i2.z, 1.0));
    p = permute(p + i.y + vec4(0.0, i1.y, i2.y, 1.0));
    p = permute(p + i.x + vec4(0.0, i1.x, i2.x, 1.0));

    // One gradient per corner: ring index, grid coordinates, height over the octahedron's equator.
    const float n_ = 0.142857142857;
    vec3 ns = n_ * D.wyz - D.xzx;
    vec4 j = p - 49.0 * floor(p * ns.z * ns.z);
    vec4 column = floor(j * ns.z);
    vec4 row = floor(j - 7.0 * column);
    vec4 x = column * ns.x + ns.yyyy;
    vec4 y = row * ns.x + ns.yyyy;
    vec4 h = 1.0 - abs(x) - abs(y);

    // The lower half is folded outward.
    vec4 fold = -step(h, vec4(0.0));
    x += (floor(x) * 2.0 + 1.0) * fold;
    y += (floor(y) * 2.0 + 1.0) * fold;

    vec3 p0 = vec3(x.x, y.x, h.x);
    vec3 p1 = vec3(x.y, y.y, h.y);
    vec3 p2 = vec3(x.z, y.z, h.z);
    vec3 p3 = vec3(x.w, y.w, h.w);
    vec4 norm = taylorInvSqrt(vec4(dot(p0, p0), dot(p1, p1), dot(p2, p2), dot(p3, p3)));
    vec4 slope = norm * vec4(dot(p0, x0), dot(p1, x1), dot(p2, x2), dot(p3, x3));

    vec4 m = max(0.6 - vec4(dot(x0, x0), dot(x1, x1), dot(x2, x2), dot(x3, x3)), 0.0);
    m = m * m;
    return 42.0 * dot(m * m, slope);
}

// About -1 to 1. All three coordinates scale from octave to octave.
float fbm3(vec3 v) {
    float sum = simplex(v) + simplex(2.0 * v) / 2.0 + simplex(4.0 * v) / 4.0;
    return sum / (1.0 + 1.0 / 2.0 + 1.0 / 4.0);
}

float fbm5(vec3 v) {
    float sum = simplex(v) + simplex(2.0 * v) / 2.0 + simplex(4.0 * v) / 4.0 + simplex(8.0 * v) / 8.0 +
                simplex(16.0 * v) / 16.0;
    return sum / (1.0 + 1.0 / 2.0 + 1.0 / 4.0 + 1.0 / 8.0 + 1.0 / 16.0);
}

// ---- Smoke ----

// 0 to 2. Uses the uniform complexity on purpose, also for the lines' alpha noise.
float getSmokeNoise(vec2 uv, float evolution) {
    const float noiseSwirlValue = 1.0;
    float noiseSwirlFloatValue = 1.0 + float(complexity) * 0.1;
    int noiseSwirlSteps = int(floor(noiseSwirlFloatValue));
    float noiseSwirlStepValue = noiseSwirlValue / noiseSwirlFloatValue;

    vec3 v = vec3(uv, evolution);
    int i = 0;
    if (i < noiseSwirlSteps) {
        do {
            v.xy += vec2(fbm3(v), fbm3(vec3(v.x, v.y, v.z + 1000.0))) * noiseSwirlStepValue;
            i++;
        } while (i < noiseSwirlSteps);
    }
    float noise = fbm5(v) / 2.0 + 0.5;
    return noise * noise * noise * noise * 2.0;
}

// ---- Gradient noise ----

float perlinCorner(vec3 pi, vec3 pf, vec3 corner) {
    return dot(pf - corner, hash33(pi + corner));
}

// Signed, around 0: the gradients are not normalised, the fade is the cubic one.
float perlinNoise(vec3 p) {
    vec3 pi = floor(p);
    vec3 pf = p - pi;
    vec3 w = pf * pf * (3.0 - 2.0 * pf);

    float c000 = perlinCorner(pi, pf, vec3(0.0, 0.0, 0.0));
    float c100 = perlinCorner(pi, pf, vec3(1.0, 0.0, 0.0));
    float c001 = perlinCorner(pi, pf, vec3(0.0, 0.0, 1.0));
    float c101 = perlinCorner(pi, pf, vec3(1.0, 0.0, 1.0));
    float c010 = perlinCorner(pi, pf, vec3(0.0, 1.0, 0.0));
    float c110 = perlinCorner(pi, pf, vec3(1.0, 1.0, 0.0));
    float c011 = perlinCorner(pi, pf, vec3(0.0, 1.0, 1.0));
    float c111 = perlinCorner(pi, pf, vec3(1.0, 1.0, 1.0));

    return mix(mix(mix(c000, c100, w.x), mix(c001, c101, w.x), w.z),
               mix(mix(c010, c110, w.x), mix(c011, c111, w.x), w.z), w.y);
}

// ---- Worley ----

// At most 1, and below 0 where the nearest point is further away than 1. Repeats every freq cells.
float worleyNoise(vec3 uv, float freq) {
    vec3 id = floor(uv);
    vec3 p = fract(uv);
    float minDist = 10000.0;  // squared
    for (float x = -1.0; x <= 1.0; x += 1.0) {
        for (float y = -1.0; y <= 1.0; y += 1.0) {
            for (float z = -1.0; z <= 1.0; z += 1.0) {
                vec3 offset = vec3(x, y, z);
                vec3 h = hash33(mod(id + offset, vec3(freq))) * 0.5 + 0.5;
                h += offset;
                vec3 d = p - h;
                minDist = min(minDist, dot(d, d));
            }
        }
    }
    return 1.0 - minDist;
}

// The uniform complexity is the number of cells per unit, on purpose also for the lines' alpha noise.
float worleyFbm(vec2 uv, float evolution) {
    float freq = float(complexity);
    vec3 p = vec3(uv, evolution) * freq;
    float sum = 0.0;
    float weight = 0.625;
    int octave = 0;
    do {
        sum += worleyNoise(p, freq) * weight;
        p *= 2.0;
        freq *= 2.0;
        weight = octave == 0 ? 0.25 : 0.125;
        octave++;
    } while (octave < 3);
    return sum;
}

// ---- Choice of noise ----

// A type outside 1 to 4 gives a flat 0.
float noiseByType(vec2 p, int noiseType, float evolution, vec2 scale, vec2 offset, float speed,
                  int complexity) {
    vec2 q = p * scale + offset;
    if (noiseType == 1) {
        return fliud_noise(q, evolution, speed, vec2(1.0, 1.0), complexity);
    }
    if (noiseType == 2) {
        return voronoi(6.0 * q, evolution * speed, float(complexity) / 100.0);
    }
    if (noiseType == 3) {
        return getSmokeNoise(q, evolution * speed * 0.1);
    }
    if (noiseType == 4) {
        return worleyFbm(q, evolution * speed * 0.1);
    }
    return 0.0;
}

// With the loop on, the noise of this point of the cycle is blended with that of one cycle earlier, so that
// the end of a cycle continues at its start. The call is written once, in a loop of one or two passes: drivers
// that inline everything need minutes for three copies of the generators.
float noiseWithLoop(vec2 p, int noiseType, float evolution, int loopEvolution, vec2 scale, vec2 offset,
                    float speed, int complexity) {
    const float cycle = 360.0;  // degrees
    float e = evolution / cycle;
    float part = e - floor(e);
    bool looped = loopEvolution == 1;

    float result = 0.0;
    int turn = 0;
    do {
        float time = looped ? (part - float(turn)) * cycle : evolution;
        float noise = noiseByType(p, noiseType, time, scale, offset, speed, complexity);
        result = turn == 0 ? noise : mix(result, noise, part);
        turn++;
    } while (turn < (looped ? 2 : 1));
    return result;
}

// ---- Height ----

// Red, green, blue, alpha of a layer at uv.
vec4 layerColor(sampler2D layer, vec2 uv) {
    return texture(layer, uv).gbar * multiplier16bit;
}

vec4 inverted(vec4 color, int lightnessInvert, int alphaInvert) {
    if (lightnessInvert == 1) {
        color.rgb = color.rgb * (-1.0) + 1.0;
    }
    if (alphaInvert == 1) {
        color.a = color.a * (-1.0) + 1.0;
    }
    return color;
}

// What a layer contributes to the height. Its colour is straight; its alpha weights it here.
float layerHeight(vec4 color, float gain) {
    return gain * ((color.r + color.g + color.b) / 3.0) * color.a;
}

// smoothstep, and a hard step where both edges are equal: the edge itself counts as above.
float cutStep(float low, float high, float value) {
    return low == high ? step(high, value) : smoothstep(low, high, value);
}

// The coverage that both thresholds leave, 0 to 1. The feathers are above the lower and below the upper
// threshold.
float croppingAlpha(float height, int bottomEnabled, float bottomThreshold, float bottomFeather,
                    int topEnabled, float topThreshold, float topFeather) {
    float result = 1.0;
    if (bottomEnabled == 1) {
        result *= cutStep(bottomThreshold, bottomThreshold + bottomFeather, height);
    }
    if (topEnabled == 1) {
        result *= 1.0 - cutStep(topThreshold - topFeather, topThreshold, height);
    }
    return result;
}

// x, rounded here. A compiler may merge the factors of sums and products, and can do so more often where
// switches are constants; it cannot merge across a choice by a uniform.
float settled(float x) {
    return multiplier16bit > 0.0 ? x : 0.0;
}

// The height at uv, not clamped, and the coverage, 0 to 1.
vec2 getHeight(vec2 uv) {
    float a = 1.0;
    float h = (noiseContrast / 100.0) * noiseWithLoop(uv, noiseType, evolution, loopEvolution, scale,
                                                      vec2(offsetX, offsetY), fluidSpeed, complexity);
    if (useLayer1 == 1) {
        vec4 color =
            inverted(layerColor(inputTexture1, out_uvs.xy), layer1LightnessInvert, layer1AlphaInvert);
        h *= layerHeight(color, layer1Mult);
        if (color.a < alphaThreshold) {
            a = 0.0;
        }
    }
    h = settled(h);
    if (useLayer2 == 1) {
        vec4 color =
            inverted(layerColor(inputTexture2, out_uvs.xy), layer2LightnessInvert, layer2AlphaInvert);
        h += layerHeight(color, layer2Mult) * float(useLayer2);
    }
    h = settled(h);
    h += noiseBrightness / 100.0;

    a *=
        croppingAlpha(h, noiseBottomCroppingEnabled, noiseBottomCroppingThreshold, noiseBottomCroppingFeather,
                      noiseTopCroppingEnabled, noiseTopCroppingThreshold, noiseTopCroppingFeather);
    return vec2(h, a);
}

// ---- Colour ----

// Scales a gradient position relative to a base.
float scaleAbout(float position, float factor, float base) {
    return (position - base) * factor + base;
}

// Wraps into 0 to 1; twice, so that a tiny negative number does not become 1.
float wrapped(float position) {
    return fract(fract(position) + 1.0);
}

vec2 wrapped(vec2 position) {
    return fract(fract(position) + 1.0);
}

// The jitter is added after the wrap and not wrapped again, so a position can be outside 0 to 1.
float noiseGradientPosition(float height) {
    float noiseGradientPart =
        scaleAbout(height + noiseGradientOffset, noiseGradientScale, noiseGradientScaleBase);
    if (noiseGradientLoop == 1) {
        noiseGradientPart = wrapped(noiseGradientPart);
    }
    vec3 slice = vec3(noiseGradientPart * gradientRandomizeFrequency * 10.0, randomSeed + 5.0, 0.0);
    if (positionsJitter) {
        return noiseGradientPart + perlinNoise(slice) * 2.0 * gradientRandomizeAmplitude;
    }
    // The noise of a slice that is not finite is NaN, at any amplitude.
    return isinf(slice.x) || isnan(slice.x) ? uintBitsToFloat(0x7fc00000U) : noiseGradientPart;
}

// The layer as reflected by the height field, or the bump map itself without a layer. Slopes are per fragment
// of the double-size target.
vec4 reflection(float height) {
    vec3 slope = vec3(dFdx(height) * reflectionScale, dFdy(height) * reflectionScale, 0.01);
    vec3 normal = 0.5 - 0.5 * normalize(slope);
    return useLayer3 == 0 ? vec4(normal, 1.0) : layerColor(inputTexture3, normal.xy);
}

// The layer displaced along the diagonal, by nothing at height 0.5. The gradient's loop wraps the layer.
vec4 refraction(vec2 p, float height) {
    vec2 uv = p + (height * 2.0 - 1.0) * reflectionScale;
    if (noiseGradientLoop == 1) {
        uv = wrapped(uv);
    }
    return layerColor(inputTexture3, uv);
}

// Colour of the noise, and the factor on its coverage. A ramp's own alpha has no effect; an unknown mode is
// black.
vec4 noiseColor(vec2 p, float height) {
    float noiseGradientPart = noiseGradientPosition(height);
    if (colorizeMode == colorizeModeGradient) {
        return vec4(texture(noiseGradientTexture, vec2(noiseGradientPart, 0.5)).rgb, 1.0);
    }
    if (colorizeMode == colorizeModeGradientFromLayer) {
        return layerColor(inputTexture3, vec2(noiseGradientPart, 0.5));
    }
    if (colorizeMode == colorizeModeReflectionFromLayer) {
        return reflection(height);
    }
    if (colorizeMode == colorizeModeRefractionFromLayer) {
        return refraction(p, height);
    }
    return vec4(0.0, 0.0, 0.0, 1.0);
}

// ---- Isolines ----

// 0 on the contours at ref plus multiples of pas, 1 away from them; lg is the height per pixel. A flat field
// has no contour, not even at the height of one.
float isoline(float val, float lg, float ref, float pas, float thickness) {
    if (lg == 0.0) {
        return 1.0;
    }
    float v = abs(mod(val - ref + pas * 0.5, pas) - pas * 0.5) / lg - 0.5 * thickness;
    return smoothstep(0.2, 0.8, v);
}

// -0.5 to 0.5, one number per line and seed.
float lineJitter(float ind, float seed) {
    return rand(vec2(ind, seed)) - 0.5;
}

// The height of a line's contour.
float isolinePosition(float ind, float divCount) {
    float position = ind / divCount;
    if (linesJitter) {
        position += lineJitter(ind, randomSeed) * linesRandomize / divCount;
    }
    return position;
}

// Output pixels.
float lineWidth(float ind) {
    float width = linesWidth;
    if (lineWidthsJitter) {
        width += rand(vec2(ind, randomSeed + 2.0)) * widthRandomize * linesWidth;
    }
    return width;
}

float linesGradientPosition(float ind, float divCount) {
    float gradientPart =
        scaleAbout(ind / divCount + linesGradientOffset, linesGradientScale, linesGradientScaleBase);
    if (lineColorsJitter) {
        gradientPart += lineJitter(ind, randomSeed + 1.0) * gradientRandomize / divCount;
    }
    return linesGradientLoop == 1 ? wrapped(gradientPart) : gradientPart;
}

// 1 where the line's alpha noise reaches the threshold, else 0. Lines differ in time and in one of four
// diagonal directions. The seed is a product on purpose: at seed 0 it is that of the line's height.
float lineMask(vec2 p, float ind, float divCount) {
    float currentAlphaRandomize = 0.0;
    if (lineMasksJitter) {
        currentAlphaRandomize = 360.0 * lineJitter(ind, randomSeed * 3.0) * alphaRandomize / divCount;
    }
    float sx = 1.0 - 2.0 * floor(mod(ind * 0.5, 2.0));
    float sy = 1.0 - 2.0 * floor(mod(ind * 0.5 + 0.5, 2.0));
    vec2 alphaRandomizeOffset = vec2(sx, sy) * currentAlphaRandomize;
    float alphaNoise = noiseWithLoop(p, linesAlphaNoiseType, linesAlphaNoiseEvolution + currentAlphaRandomize,
                                     linesAlphaNoiseLoopEvolution, linesAlphaNoiseScale,
                                     linesAlphaNoiseOffset + alphaRandomizeOffset, linesAlphaNoiseSpeed,
                                     linesAlphaNoiseComplexity);
    return step(linesAlphaThreshold, alphaNoise);
}

// Over, with straight alpha; where both alphas are 0 the result is transparent black.
vec4 blendNormal(vec4 under, vec3 color, float alpha) {
    float resultAlpha = alpha + under.a * (1.0 - alpha);
    if (resultAlpha == 0.0) {
        return vec4(0.0, 0.0, 0.0, 0.0);
    }
    vec3 sum = color * alpha + under.rgb * under.a * (1.0 - alpha);
    return vec4(clamp(sum / resultAlpha, 0.0, 1.0), resultAlpha);
}

vec4 blendAdd(vec4 under, vec3 color, float alpha) {
    return vec4(clamp(under.rgb + alpha * color, 0.0, 1.0), clamp(under.a + alpha, 0.0, 1.0));
}

vec4 blendMultiply(vec4 under, vec3 color, float alpha) {
    return vec4((1.0 - alpha) * under.rgb + alpha * under.rgb * color, (1.0 - alpha) * under.a + alpha);
}

vec4 blendLine(vec4 under, vec3 color, float alpha) {
    if (linesBlendMode == 1) {
        return blendNormal(under, color, alpha);
    }
    if (linesBlendMode == 2) {
        return blendAdd(under, color, alpha);
    }
    if (linesBlendMode == 3) {
        return blendMultiply(under, color, alpha);
    }
    return under;
}

// Draws the lines over a colour, the last on top.
vec4 drawLines(vec4 under, vec2 p, float noiseHeight) {
    float lineCroppingAlpha = croppingAlpha(
        noiseHeight, linesBottomCroppingEnabled, linesBottomCroppingThreshold, linesBottomCroppingFeather,
        linesTopCroppingEnabled, linesTopCroppingThreshold, linesTopCroppingFeather);
    float lineHeight = noiseHeight + linesOffset;
    if (linesLoop == 0) {
        lineHeight = clamp(lineHeight, 0.0, 1.0);
    }
    float lg = 2.0 * length(vec2(dFdx(lineHeight), dFdy(lineHeight)));  // per output pixel

    vec4 result = under;
    if (linesCount < 1) {
        return result;
    }
    float divCount = float(linesCount + 1);
    int i = 0;
    do {
        float ind;
        float lineAlpha;
        vec3 lineColor;
        bool maskMatters;
        // Continues to the next line that is visible here. A line without alpha is blended too, since the
        // blend modes clamp, but its alpha noise, which costs most, has no effect.
        do {
            i++;
            ind = float(i);
            float distant = isoline(lineHeight, lg, isolinePosition(ind, divCount), 1.0, lineWidth(ind));
            lineAlpha = linesAlpha * lineCroppingAlpha * clamp(1.0 - distant, 0.0, 1.0);
            // With an explicit level, as derivatives are undefined where some pixels have left the loop.
            lineColor =
                textureLod(linesGradientTexture, vec2(linesGradientPosition(ind, divCount), 0.5), 0.0).rgb;
            maskMatters = linesMasked && lineAlpha != 0.0;
            if (!maskMatters) {
                result = blendLine(result, lineColor, lineAlpha);
            }
        } while (!maskMatters && i < linesCount);
        if (maskMatters) {
            result = blendLine(result, lineColor, lineAlpha * lineMask(p, ind, divCount));
        }
    } while (i < linesCount);
    return result;
}

void main() {
    vec2 p = out_uvs.xy;
    vec2 heightAndA = getHeight(p);
    float noiseHeight = heightAndA.x;

    vec4 result = vec4(0.0, 0.0, 0.0, 0.0);
    if (noiseVisible == 1) {
        vec4 color = noiseColor(p, noiseHeight);
        result = vec4(color.rgb, heightAndA.y * color.a);
    }
    if (linesVisible == 1.0) {
        result = drawLines(result, p, noiseHeight);
    }
    colourOut = result;
}
