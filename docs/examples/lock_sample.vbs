' Locks the sample: chooses its solvent, lets the panel find and centre the line, and waits until the lock holds.
'   cscript //nologo lock_sample.vbs [solvent]
' Exit code 0: locked. 1: not locked within five minutes. 2: the panel refused something.
Option Explicit

Const Locked = 513, LongestSeconds = 300, MostTries = 50
Const Busy = &H8001010A, Rejected = &H80010001

Dim lock, solvent, state, started
solvent = "CDCl3"
If WScript.Arguments.Count > 0 Then solvent = WScript.Arguments(0)

On Error Resume Next
Set lock = CreateObject("VantrelLock.NMRLock")
StopIfFailed "The lock panel cannot be started"

Do
  Err.Clear
  lock.LockSolventText = solvent
Loop While TryAgain()
StopIfFailed "The solvent cannot be set"

Do
  Err.Clear
  lock.StartAutoLock
Loop While TryAgain()
StopIfFailed "AutoLock cannot be started"

started = Timer
Do
  Pause
  Do
    Err.Clear
    state = lock.GetLockState
  Loop While TryAgain()
  StopIfFailed "The lock cannot be read"
  If state = Locked Then
    WScript.Echo "Locked on " & lock.LockSolventText
    WScript.Quit 0
  End If
Loop While Elapsed(started) < LongestSeconds
WScript.Echo "Not locked after " & LongestSeconds & " s, state " & state
WScript.Quit 1

' True when the last call found the panel busy, a message box waiting for the operator; it should be made again.
Dim tries
Function TryAgain()
  TryAgain = False
  If Err.Number <> Busy And Err.Number <> Rejected Then
    tries = 0
    Exit Function
  End If
  tries = tries + 1
  If tries >= MostTries Then Exit Function
  TryAgain = True
  Pause
End Function

Sub StopIfFailed(what)
  If Err.Number = 0 Then Exit Sub
  WScript.Echo what & ": " & Err.Description & " (" & Err.Number & ", " & Err.Source & ")"
  WScript.Quit 2
End Sub

' Seconds since a moment of today or, past midnight, of yesterday.
Function Elapsed(since)
  Elapsed = Timer - since
  If Elapsed < 0 Then Elapsed = Elapsed + 86400
End Function

' About a second, in every script host, without keeping the processor busy.
Sub Pause
  CreateObject("WScript.Shell").Run "ping -n 2 127.0.0.1", 0, True
End Sub
