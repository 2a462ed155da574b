;;; Drives emacs in the folder of an installation.  -*- lexical-binding: t -*-
;; SPDX-License-Identifier: Apache-2.0

(require 'cl-lib)

(defun wait-for (what condition)
  (let ((end (+ (float-time) 30)))
    (while (not (funcall condition))
      (when (> (float-time) end) (error "Waited in vain for %s" what))
      (accept-process-output nil 0.05))))

(defun expect (what actual expected)
  (unless (equal actual expected) (error "%s: %S instead of %S" what actual expected)))

(defun go-to (text)
  "Put point onto TEXT."
  (goto-char (point-min))
  (search-forward text)
  (goto-char (match-beginning 0)))

(defun wait-for-diagnostics (number)
  (wait-for (format "%d diagnostics" number)
            (lambda () (= number (length (flymake-diagnostics))))))

(find-file "classes.tmfx")
(run-hooks 'post-command-hook)          ; the server is started after the command
(wait-for "server" #'eglot-managed-p)

;; Diagnostics.
(flymake-start)
(wait-for-diagnostics 1)
(go-to "afinity")
(let ((found (car (flymake-diagnostics))))
  (expect "place" (list (flymake-diagnostic-beg found) (flymake-diagnostic-end found))
          (list (point) (+ (point) (length "afinity")))))

;; The first action is taken unless another one is chosen.
(cl-letf (((symbol-function 'completing-read)
           (lambda (_prompt actions &rest _) (caar actions))))
  (let ((last-nonmenu-event ?a))
    (eglot-code-actions (point) nil nil t)))
(go-to " affinity=")
(save-buffer)                           ; the server is told of it at once
(wait-for-diagnostics 0)

;; Rename, which asks before it opens a file.
(go-to "clock\"/>")
(cl-letf (((symbol-function 'y-or-n-p) #'always))
  (eglot-rename "chrono"))
(go-to "moduleref=\"chrono\"")
(save-some-buffers t)

;; Definition.
(go-to "chrono")
(xref-find-definitions (xref-backend-identifier-at-point (xref-find-backend)))
(expect "definition" (list (file-name-nondirectory buffer-file-name) (line-number-at-pos))
        '("modules.tmfx" 4))

(eglot-shutdown (eglot-current-server))
