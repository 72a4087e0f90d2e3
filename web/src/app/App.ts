import { Api, type Choice } from '../data/Api';
import { Connection } from '../data/Connection';
import { findProportions, type Proportions } from '../data/Proportions';
import { type CloudInfo, type ColorResult, type GroundResult, type OutlineResult, type PickedPoint, placeOf } from '../data/info';
import { Flight } from '../hands/Flight';
import { Motion } from '../hands/Motion';
import { Pointers } from '../hands/Pointers';
import type { Box } from '../math/Box';
import { boxToDrawn, toDrawn } from '../math/stretch';
import type { Vec3 } from '../math/vec3';
import { makeCorridor } from '../tools/corridor';
import { Gathering, toolKinds, type ToolName } from '../tools/tools';
import { Ui } from '../ui/Ui';
import { refocus, type Camera } from '../view/Camera';
import { firstDirection, fitView, frameOf, type Direction, type Frame } from '../view/fitView';
import type { View } from '../view/View';
import { FrameLoop } from './FrameLoop';
import { parseHash } from './hash';
import { Jobs } from './Jobs';
import { bindKeys } from './keys';
import { Memory } from './Memory';
import { Painter } from './Painter';
import { Picker } from './Picker';
import { saveScreenshot } from './saveScreenshot';
import { shiftIntoView } from './shiftIntoView';
import { Stage } from './Stage';
import { firstState, grainOf, leastWidth, sourceOf } from './start';
import type { State } from './State';
import { takePlace } from './takePlace';

/** The page with a cloud that is loaded. */
export class App {
    readonly ui: Ui;
    readonly stage: Stage;
    readonly jobs: Jobs;
    readonly picker: Picker;
    readonly flight = new Flight();
    readonly painter: Painter;
    readonly proportions: Proportions;
    readonly #loop: FrameLoop;
    readonly #memory: Memory;
    readonly #pointers: Pointers;
    state: State;
    gathering: Gathering | null = null;
    hovered: PickedPoint | null = null;
    motion: Motion | null = null;
    flying = false;
    aimsWithKeys = false;
    colors: ColorResult | null = null;
    outline: OutlineResult | null = null;
    ground: GroundResult | null = null;

    constructor(
        readonly api: Api,
        readonly info: CloudInfo,
        root: HTMLElement,
    ) {
        this.proportions = findProportions(info);
        this.ui = new Ui(root, this);
        this.state = firstState(info, innerWidth / innerHeight);
        this.#loop = new FrameLoop(this);
        this.stage = new Stage(this.ui.canvas, this.ui.overlay, api, grainOf(info, this.proportions), () => this.redraw(), (error) => this.ui.tellFailure('A tile could not be had', error));
        this.jobs = new Jobs(api, (job) => this.ui.showJob(job), (title, error) => this.ui.tellFailure(title, error));
        this.picker = new Picker(api, () => this.view(), () => this.choice(), this.proportions.stretch, (error) => this.ui.tellFailure('No point could be looked for', error));
        this.painter = new Painter(this);
        this.#memory = new Memory(this);
        this.#pointers = new Pointers(this.ui.canvas, this.#hands());
        const connection = new Connection(() => api.info(), (answers) => this.ui.showAnswers(answers));
        api.onAnswer = (answers) => connection.note(answers);
        bindKeys(this);
        const box = this.drawnBox(this.bounds());
        this.change({ camera: fitView(box, firstDirection(box), this.frame()), ...parseHash(location.hash) });
    }

    bounds(): Box {
        return this.info.bounds ?? { min: [-1, -1, -1], max: [1, 1, 1] };
    }

    drawnBox(box: Box): Box {
        return boxToDrawn(box, this.proportions.stretch);
    }

    /** What a cloud is to fill: the picture without tools, panels and the legend. */
    frame(): Frame {
        return frameOf(this.ui.roomForCloud(this.painter.legendWidth()), this.stage.width, this.stage.height);
    }

    view(): View {
        return this.stage.viewOf(this.state.camera);
    }

    choice(): Choice {
        return { version: this.state.ground ? this.ground?.version : undefined, box: this.state.clip };
    }

    redraw(): void {
        this.#loop?.request();
    }

    /** The only way in which the state changes: whoever shows some of it follows. */
    change(changes: Partial<State>): void {
        const before = this.state;
        this.state = { ...before, ...changes };
        if (this.state.camera !== before.camera) this.#pointers.letGo();
        this.stage.show(sourceOf(this));
        this.ui.update(this.state, before);
        this.#follow(before);
        this.#memory.save();
        this.redraw();
    }

    /** A change that comes from a link, or from going back. */
    #follow(before: State): void {
        const { state } = this;
        if (state.color !== before.color && state.color !== 'file' && state.color !== 'height') void this.#loadColors();
        if (state.ground && !before.ground && this.ground === null) void this.#loadGround();
        if (state.outline !== before.outline) void this.#loadOutline();
    }

    async #loadColors(): Promise<void> {
        const by = this.state.color;
        if (this.colors?.by === by) return;
        const colors = await this.jobs.run<ColorResult>(`Colours by ${by}`, 'api/color', { by });
        if (this.state.color !== by) return;
        if (colors === null) return this.change({ color: this.info.colored ? 'file' : 'height' });
        this.colors = colors;
        this.change({});
    }

    async #loadGround(): Promise<void> {
        this.ground = await this.jobs.run<GroundResult>('Ground', 'api/ground', {});
        if (this.ground?.note) this.ui.tell(this.ground.note);
        this.change({ ground: this.ground !== null && this.state.ground });
        this.ui.updateCards();
    }

    async #loadOutline(): Promise<void> {
        const { outline } = this.state;
        this.outline = null;
        if (outline === null) return this.redraw();
        const found = await this.jobs.run<OutlineResult>('Outline', 'api/outline', { distance: outline });
        if (this.state.outline !== outline) return;
        this.outline = found;
        if (found === null) return this.change({ outline: null });
        this.ui.showOutline(found);
        this.redraw();
    }

    #hands(): ConstructorParameters<typeof Pointers>[1] {
        return {
            view: () => this.view(),
            setCamera: (camera) => this.setCamera(camera),
            pickPlace: async (x, y) => {
                const point = await this.picker.pick(x, y);
                return point ? this.drawnPlace(point) : null;
            },
            hover: (x, y) => this.picker.hover(x, y, (point) => this.setHovered(point)),
            leave: () => this.setHovered(null),
            click: (x, y) => void takePlace(this, x, y),
            doubleClick: (x, y) => void this.#doubleClick(x, y),
            drag: () => (this.flying ? 'look' : this.isMap() ? 'pan' : 'orbit'),
        };
    }

    setCamera(camera: Camera): void {
        this.motion = null;
        const held = this.state.camera;
        this.state = { ...this.state, camera };
        if (camera.parallel !== held.parallel) this.ui.update(this.state, this.state);
        this.#memory.save();
        this.redraw();
    }

    isMap(): boolean {
        return this.state.camera.parallel && this.state.camera.elevation === 90;
    }

    setHovered(point: PickedPoint | null): void {
        this.hovered = point;
        this.ui.showHovered(point);
        this.redraw();
    }

    /** The middle of the picture, which the space bar takes, is shown to hands on the keys alone. */
    aimWithKeys(yes: boolean): void {
        if (this.aimsWithKeys === yes) return;
        this.aimsWithKeys = yes;
        if (yes) this.setHovered(null); // of a pointer that rests
        else this.redraw();
    }

    addPoint(point: PickedPoint): void {
        if (this.gathering?.add(placeOf(point), point.index)) this.finishTool();
        else this.ui.updateTool();
        this.redraw();
    }

    async #doubleClick(x: number, y: number): Promise<void> {
        if (this.gathering !== null) {
            await takePlace(this, x, y);
            this.finishTool();
            return;
        }
        const point = await this.picker.pick(x, y);
        if (point) this.flyTo(this.drawnPlace(point));
    }

    drawnPlace(point: PickedPoint): Vec3 {
        return toDrawn(placeOf(point), this.proportions.stretch);
    }

    /** Comes nearer to a place as drawn, which then lies in the middle. */
    flyTo(place: Vec3): void {
        const { camera } = this.state;
        this.move({ ...refocus(camera, place), target: place, distance: 0.35 * camera.distance });
    }

    move(to: Camera): void {
        this.motion = new Motion(this.state.camera, to, performance.now());
        this.redraw();
    }

    lookFrom(direction: Direction): void {
        const parallel = direction.parallel ?? (this.state.camera.parallel && !this.isMap());
        this.move(fitView(this.drawnBox(this.state.clip ?? this.bounds()), { ...direction, parallel }, this.frame()));
    }

    fit(): void {
        const { azimuth, elevation, parallel } = this.state.camera;
        this.lookFrom({ azimuth, elevation, parallel });
    }

    showMap(): void {
        if (this.isMap()) this.lookFrom({ azimuth: 215, elevation: 35, parallel: false });
        else this.lookFrom({ azimuth: 180, elevation: 90, parallel: true });
    }

    toggleParallel(): void {
        const { camera } = this.state;
        this.change({ camera: { ...camera, parallel: !camera.parallel } });
    }

    toggleFlight(): void {
        this.flying = !this.flying;
        this.flight.stop();
        if (this.flying && this.state.camera.parallel) this.toggleParallel();
        this.ui.updateTool();
    }

    toggleTheme(): void {
        this.change({ theme: this.state.theme === 'dark' ? 'light' : 'dark' });
    }

    toggleClip(): void {
        this.change({ clip: this.state.clip === null ? this.bounds() : null });
    }

    toggleOutline(): void {
        this.change({ outline: this.state.outline === null ? 'auto' : null });
    }

    toggleGround(): void {
        this.change({ ground: !this.state.ground });
    }

    startTool(name: ToolName): void {
        const same = this.gathering?.kind.name === name;
        this.gathering = same ? null : new Gathering(toolKinds[name]);
        this.flying = false;
        this.ui.updateTool();
        this.redraw();
    }

    stopTool(): void {
        this.gathering = null;
        this.flying = false;
        this.flight.stop();
        this.ui.updateTool();
        this.redraw();
    }

    /** What has been clicked becomes what it was clicked for; the tool is ready for the next. */
    finishTool(): void {
        const { gathering } = this;
        if (!gathering?.canFinish) return;
        const { kind: { name }, places, indices } = gathering;
        const stays = name !== 'profile' && name !== 'polygon';
        this.gathering = stays ? new Gathering(gathering.kind) : null;
        if (name === 'profile') {
            this.change({ corridor: makeCorridor(places[0], places[1], this.proportions.stretch, leastWidth(this)) });
            shiftIntoView(this, places);
        } else if (name === 'polygon') this.change({ polygon: places });
        else this.change({ marks: [...this.state.marks, { kind: name, places, indices }] });
        this.ui.updateTool();
    }

    saveScreenshot(): Promise<void> {
        return saveScreenshot(this);
    }
}
