import { dirname } from 'node:path';
import { fileURLToPath } from 'node:url';
import js from '@eslint/js';
import tseslint from 'typescript-eslint';

export default tseslint.config(
    { ignores: ['dist/**', 'out/**', 'node_modules/**', '*.mjs', '*.js'] },
    js.configs.recommended,
    ...tseslint.configs.strictTypeChecked,
    {
        languageOptions: { parserOptions: { projectService: true, tsconfigRootDir: dirname(fileURLToPath(import.meta.url)) } },
        rules: {
            'max-lines': ['error', 300],
            'max-lines-per-function': ['error', 40],
            'max-depth': ['error', 4],
            'max-params': ['error', 6],
            eqeqeq: 'error',
            'no-console': 'error',
            // Numbers in texts are meant as they print.
            '@typescript-eslint/restrict-template-expressions': ['error', { allowNumber: true }],
            // Arrow functions of one call are shorter without a block.
            '@typescript-eslint/no-confusing-void-expression': 'off',
            // Places in arrays are known to be there; the check for it is the tests' business.
            '@typescript-eslint/no-non-null-assertion': 'off',
            '@typescript-eslint/no-unnecessary-condition': 'off',
        },
    },
    {
        // A test is a list of expectations, and the runner waits for what `test` returns.
        files: ['tests/**/*.ts'],
        rules: { 'max-lines-per-function': 'off', '@typescript-eslint/no-floating-promises': 'off' },
    },
);
