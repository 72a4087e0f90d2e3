import type { Corridor } from '../app/State';
import type { Stretch } from '../math/stretch';
import type { Vec3 } from '../math/vec3';
import { profileWords, type Profile } from './decodeProfile';

/** How long, as drawn, a unit of the cloud's plan is along a line and across it. */
export function scalesOf(from: Vec3, to: Vec3, stretch: Stretch): { along: number; across: number } {
    const [dx, dy] = [to[0] - from[0], to[1] - from[1]];
    const length = Math.hypot(dx, dy);
    if (!(length > 0)) return { along: 1, across: 1 };
    return {
        along: Math.hypot(dx * stretch[0], dy * stretch[1]) / length,
        across: Math.hypot(dy * stretch[0], dx * stretch[1]) / length,
    };
}

/**
 * A corridor along a line, a round fiftieth of it wide, or what lets some points into it.
 *
 * @param least  as drawn.
 */
export function makeCorridor(from: Vec3, to: Vec3, stretch: Stretch, least = 1e-3): Corridor {
    const { along, across } = scalesOf(from, to, stretch);
    const width = Math.max(least, (along * Math.hypot(to[0] - from[0], to[1] - from[1])) / 50);
    return { from, to, width: Number(width.toPrecision(2)) / across };
}

/** The corridor's width as drawn, in which it is shown and asked for. */
export function drawnWidth({ from, to, width }: Corridor, stretch: Stretch): number {
    return Number((width * scalesOf(from, to, stretch).across).toPrecision(12));
}

/** The profile with distances as drawn. */
export function stretchProfile(profile: Profile, { from, to }: Corridor, stretch: Stretch): Profile {
    const { along } = scalesOf(from, to, stretch);
    if (along === 1) return profile;
    for (let i = 0; i < profile.floats.length; i += profileWords) profile.floats[i] *= along;
    return { ...profile, length: profile.length * along };
}
